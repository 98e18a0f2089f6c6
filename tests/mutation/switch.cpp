// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <vector>

namespace mutation {

int active = -1;
unsigned char* covered = nullptr;

namespace {

constexpr int kMost = 65536;
unsigned char seen[kMost];

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
        out_ << '\n';
    }

    std::ofstream out_;
};

/// Before any static object is made: tables are broken, too.
__attribute__((constructor(101))) void readEnvironment() {
    if (const char* const number = std::getenv("MUTANT")) active = std::atoi(number);
    if (std::getenv("MUTATION_COVERAGE") != nullptr) covered = seen;
}

const bool kListening = [] {
    const char* const path = std::getenv("MUTATION_COVERAGE");
    if (path != nullptr) testing::UnitTest::GetInstance()->listeners().Append(new CoverageWriter(path));
    return path != nullptr;
}();

}  // namespace

}  // namespace mutation
