// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/event_loop_contract.h"
#include "contract/files_contract.h"
#include "contract/timers_contract.h"
#include "unit/windows/folder_rig.h"
#include "winapi/program/windows_time.h"

namespace corvane {
namespace {

class WindowsTimeStage : public test::LoopStage<TimeStage> {
public:
    Timers& timers() override { return timers_; }
    Clock& clock() override { return clock_; }

private:
    WindowsTimers timers_;
    WindowsClock clock_;
};

class WindowsFilesStage : public FilesStage {
public:
    Files& files() override { return files_; }
    std::string root() override { return folder_.path(); }
    void makeFile(const std::string& path, const std::string& bytes) override { test::writeFile(path, bytes); }
    void makeHiddenFile(const std::string& path) override {
        makeFile(path, "");
        SetFileAttributesW(systemPath(path).c_str(), FILE_ATTRIBUTE_HIDDEN);
    }
    void makeFolder(const std::string& path) override { CreateDirectoryW(systemPath(path).c_str(), nullptr); }
    std::string bytesOf(const std::string& path) override {
        return files_.read(path, 1U << 20U).value_or("unreadable");
    }
    /// Somebody reads the file and lets nobody replace it.
    bool failReplacements() override {
        held_ = Handle(CreateFileW(systemPath(folder_.in("old.ini")).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                   OPEN_EXISTING, 0, nullptr));
        return static_cast<bool>(held_);
    }
    std::string hiddenName() override { return "hidden.wav"; }

private:
    test::TriedFolder folder_;
    WindowsFiles files_;
    Handle held_;
};

std::unique_ptr<Stage> makeLoop() { return std::make_unique<test::LoopStage<Stage>>(); }
std::unique_ptr<TimeStage> makeTime() { return std::make_unique<WindowsTimeStage>(); }
std::unique_ptr<FilesStage> makeFiles() { return std::make_unique<WindowsFilesStage>(); }

INSTANTIATE_TEST_SUITE_P(Windows, EventLoopContract, ::testing::Values(&makeLoop));
INSTANTIATE_TEST_SUITE_P(Windows, TimersContract, ::testing::Values(&makeTime));
INSTANTIATE_TEST_SUITE_P(Windows, FilesContract, ::testing::Values(&makeFiles));

}  // namespace
}  // namespace corvane
