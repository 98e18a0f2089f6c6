// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#ifdef __unix__
#include <sys/mman.h>
#endif

namespace mutation {

int active = -1;
unsigned char* covered = nullptr;

namespace {

constexpr int kMost = 65536;
constexpr const char* kReport = "MUTATION_COVERAGE";
unsigned char* seen = nullptr;

unsigned char* cleared() {
#ifdef __unix__
    // What copies of this process come by counts, too.
    void* const shared = mmap(nullptr, kMost, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return shared == MAP_FAILED ? nullptr : static_cast<unsigned char*>(shared);
#else
    return static_cast<unsigned char*>(std::calloc(kMost, 1));
#endif
}

/// Programs that a test starts do not write over what it came by.
void keepFromOthers() {
#ifdef __unix__
    unsetenv(kReport);
#else
    _putenv((std::string(kReport) + '=').c_str());
#endif
}

/// Writes a line a test: its name, its milliseconds and the numbers of the places it came by. The line named "-" is for
/// what is done outside tests.
class CoverageWriter : public testing::EmptyTestEventListener {
public:
    explicit CoverageWriter(const char* path) : out_(path) {}
    void OnTestStart(const testing::TestInfo& /*info*/) override { write("-", 0); }
    void OnTestEnd(const testing::TestInfo& info) override {
        write(std::string(info.test_suite_name()) + '.' + info.name(), info.result()->elapsed_time());
    }
    void OnTestProgramEnd(const testing::UnitTest& /*all*/) override { write("-", 0); }

private:
    void write(const std::string& name, testing::TimeInMillis milliseconds) {
        out_ << name << ' ' << milliseconds;
        for (int id = 0; id < kMost; ++id) {
            if (seen[id] != 0) out_ << ' ' << id;
            seen[id] = 0;
        }
        out_ << std::endl;  // a copy of this process has nothing to write
    }

    std::ofstream out_;
};

/// Before any static object is made: tables are broken, too.
__attribute__((constructor(101))) void readEnvironment() {
    if (const char* const number = std::getenv("MUTANT")) active = std::atoi(number);
    if (std::getenv(kReport) != nullptr) covered = seen = cleared();
}

const bool kListening = [] {
    const char* const path = std::getenv(kReport);
    if (path == nullptr) return false;
    testing::UnitTest::GetInstance()->listeners().Append(new CoverageWriter(path));
    keepFromOthers();
    return true;
}();

}  // namespace

}  // namespace mutation
