// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/resource.h>

#include <QImage>
#include <QPainter>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <optional>

#include "contract/event_loop_contract.h"
#include "contract/files_contract.h"
#include "contract/pictures_contract.h"
#include "contract/timers_contract.h"
#include "files/posix_files.h"
#include "linux/pictures/qt_pictures.h"
#include "linux/qt_loop.h"
#include "linux/qt_post.h"
#include "linux/qt_time.h"
#include "unit/linux/offscreen.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

template <class S>
class QtStage : public S {
public:
    QtStage() { test::offscreenApplication(); }
    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition, int atMostMs) override {
        return test::waitUntil(condition, atMostMs);
    }

private:
    QtLoop loop_;
};

class QtTimeStage : public QtStage<TimeStage> {
public:
    Timers& timers() override { return timers_; }
    Clock& clock() override { return clock_; }

private:
    QtTimers timers_;
    QtClock clock_;
};

class QtFilesStage : public FilesStage {
public:
    ~QtFilesStage() override {
        if (!limited_) return;
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, SIG_DFL);
    }
    Files& files() override { return files_; }
    std::string root() override { return folder_.path(); }
    void makeFile(const std::string& path, const std::string& bytes) override {
        folder_.write(path.substr(folder_.path().size() + 1), bytes);
    }
    void makeHiddenFile(const std::string& path) override { makeFile(path, ""); }
    void makeFolder(const std::string& path) override { std::filesystem::create_directory(path); }
    std::string bytesOf(const std::string& path) override {
        return folder_.bytes(path.substr(folder_.path().size() + 1));
    }
    /// The disk is full, for this process: a write fails half-way, whoever the user is.
    bool failReplacements() override {
        getrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit none = before_;
        none.rlim_cur = 1;
        return limited_ = setrlimit(RLIMIT_FSIZE, &none) == 0;
    }
    std::string hiddenName() override { return ".hidden.wav"; }

private:
    test::TemporaryFolder folder_;
    PosixFiles files_;
    rlimit before_{};
    bool limited_ = false;
};

class QtPicturesStage : public QtStage<PicturesStage> {
public:
    QtPicturesStage() {
        QImage halves(40, 30, QImage::Format_RGB32);
        halves.fill(qRgb(255, 0, 0));
        QPainter(&halves).fillRect(20, 0, 20, 30, Qt::blue);
        halves.save(QString::fromStdString(picture()), "BMP");
        folder_.write("broken.bmp", "BM this is no picture");
    }
    ~QtPicturesStage() override { post_.stop(); }
    Pictures& pictures() override { return pictures_; }
    std::string picture() override { return folder_.in("halves.bmp"); }
    std::string broken() override { return folder_.in("broken.bmp"); }
    bool isIdle() override { return pictures_.isIdle(); }

private:
    test::TemporaryFolder folder_;
    QtPost post_{loop()};
    QtPictures pictures_{post_};
};

std::unique_ptr<Stage> makeLoop() { return std::make_unique<QtStage<Stage>>(); }
std::unique_ptr<TimeStage> makeTime() { return std::make_unique<QtTimeStage>(); }
std::unique_ptr<FilesStage> makeFiles() { return std::make_unique<QtFilesStage>(); }
std::unique_ptr<PicturesStage> makePictures() { return std::make_unique<QtPicturesStage>(); }

INSTANTIATE_TEST_SUITE_P(Qt, EventLoopContract, ::testing::Values(&makeLoop));
INSTANTIATE_TEST_SUITE_P(Qt, TimersContract, ::testing::Values(&makeTime));
INSTANTIATE_TEST_SUITE_P(Qt, FilesContract, ::testing::Values(&makeFiles));
INSTANTIATE_TEST_SUITE_P(Qt, PicturesContract, ::testing::Values(&makePictures));

/// The process's time zone for one test.
class TimeZone {
public:
    explicit TimeZone(const char* zone) {
        if (const char* const before = std::getenv("TZ")) before_ = before;
        take(zone);
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    ~TimeZone() { take(before_ ? before_->c_str() : nullptr); }

private:
    static void take(const char* zone) {
        zone != nullptr ? ::setenv("TZ", zone, 1) : ::unsetenv("TZ");
        ::tzset();
    }
    std::optional<std::string> before_;
};

/// DISP-08
TEST(LocalClock, TellsTheTimeOfItsZoneNotThatOfGreenwich) {
    constexpr std::time_t kMinute = 60;
    // East of Greenwich, where the sign of a zone's rule is minus; west of it; and so far that the day is another one.
    for (const auto& [zone, minutesEast] :
         {std::pair{"EAST-5:45", 345}, {"WEST+9:30", -570}, {"FAR-14", 840}, {"UTC0", 0}}) {
        SCOPED_TRACE(zone);
        const TimeZone here(zone);
        const std::time_t before = std::time(nullptr) + minutesEast * kMinute;
        const LocalTime told = QtClock().localTime();
        const std::time_t after = std::time(nullptr) + minutesEast * kMinute;
        std::tm parts{};
        parts.tm_year = told.year - 1900;
        parts.tm_mon = told.month - 1;
        parts.tm_mday = told.day;
        parts.tm_hour = told.hour;
        parts.tm_min = told.minute;
        parts.tm_sec = told.second;
        const std::time_t counted = ::timegm(&parts);
        EXPECT_GE(counted, before);
        EXPECT_LE(counted, after);
    }
}

TEST(PosixFiles, ANameOfTensOfThousandsOfFoldersIsRefusedAtOnce) {
    PosixFiles files;
    for (const std::string part : {"/a", "/.", "/.."}) {
        std::string path;
        for (int i = 0; i < 40'000; ++i) path += part;
        const test::Stopwatch clock;
        EXPECT_FALSE(files.lookUp(path + "/b.wav"));
        EXPECT_LT(clock.own(), std::chrono::milliseconds(300)) << part;
    }
}

}  // namespace
}  // namespace corvane
