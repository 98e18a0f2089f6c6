// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_source.h"

#include <mpv/stream_cb.h>

#include <chrono>
#include <map>
#include <thread>
#include <utility>

#include "drives/drive_file.h"
#include "media/movies/movie_library.h"

namespace corvane {

namespace {
constexpr const char* kProtocol = "corvane";
constexpr std::chrono::milliseconds kStillWritten{2'000};  ///< a file written to within this may become longer
constexpr std::chrono::milliseconds kLook{20};             ///< between two looks at it
}  // namespace

/// What the player and the library's streams know of a file.
struct MovieSource::File {
    std::string path, address;
    std::atomic<bool> givenUp{false};
    std::atomic<std::int64_t> size{0};
    std::atomic<bool> opened{false};
    std::atomic<std::int64_t> read{0};  ///< bytes, until it was opened
    std::mutex mutex;
    std::string failure;                                             ///< guarded by the mutex
    std::map<std::string, std::shared_ptr<const std::string>> lent;  ///< by address; guarded by the mutex

    void fail(const std::string& why) {
        const std::lock_guard lock(mutex);
        failure = why;
    }
};

/// A file that the library has open. Its calls come from the library's threads, one at a time.
struct MovieSource::Stream {
    std::shared_ptr<File> file;
    std::unique_ptr<DriveFile> bytes;
    std::int64_t at = 0;

    static Stream& of(void* cookie) { return *static_cast<Stream*>(cookie); }

    /// At the end of a file that is still being written, by a recorder or a download: waits for what comes. The library
    /// reads ahead of what is shown, so that is not held up. 0: nothing came.
    std::int64_t more(char* to, std::uint64_t count) {
        for (const auto until = std::chrono::steady_clock::now() + kStillWritten;;) {
            const auto untouched = bytes->untouchedFor();
            if (!untouched || *untouched < std::chrono::milliseconds(0) || *untouched > kStillWritten) return 0;
            if (std::chrono::steady_clock::now() > until) return 0;
            std::this_thread::sleep_for(kLook);
            if (file->givenUp) return -1;
            const std::int64_t got = bytes->read(at, to, count);
            if (got != 0) return got;
        }
    }

    static std::int64_t read(void* cookie, char* to, std::uint64_t count) {
        Stream& stream = of(cookie);
        if (stream.file->givenUp) return -1;
        if (!stream.file->opened && stream.file->read > kMostToOpen) {
            stream.file->fail("Too much would have to be read before it begins.");
            return -1;
        }
        std::int64_t got = stream.bytes->read(stream.at, to, count);
        if (got == 0 && stream.file->opened) got = stream.more(to, count);
        if (got < 0) stream.file->fail(stream.bytes->failure());
        if (got > 0) stream.at += got;
        if (got > 0 && !stream.file->opened) stream.file->read += got;
        return got;
    }
    static std::int64_t seek(void* cookie, std::int64_t to) {
        return to < 0 ? std::int64_t{MPV_ERROR_GENERIC} : of(cookie).at = to;
    }
    static std::int64_t size(void* cookie) { return of(cookie).bytes->size(); }
    static void close(void* cookie) { delete static_cast<Stream*>(cookie); }
};

/// Bytes in memory that the library reads as a file.
struct MovieSource::Lent {
    std::shared_ptr<const std::string> bytes;
    std::size_t at = 0;

    static Lent& of(void* cookie) { return *static_cast<Lent*>(cookie); }
    static std::int64_t read(void* cookie, char* to, std::uint64_t count) {
        Lent& lent = of(cookie);
        const std::size_t got = lent.bytes->copy(to, count, lent.at);
        lent.at += got;
        return static_cast<std::int64_t>(got);
    }
    static std::int64_t seek(void* cookie, std::int64_t to) {
        Lent& lent = of(cookie);
        if (to < 0 || static_cast<std::uint64_t>(to) > lent.bytes->size()) return MPV_ERROR_GENERIC;
        lent.at = static_cast<std::size_t>(to);
        return to;
    }
    static std::int64_t size(void* cookie) { return static_cast<std::int64_t>(of(cookie).bytes->size()); }
    static void close(void* cookie) { delete static_cast<Lent*>(cookie); }
};

bool MovieSource::attach(mpv_handle* player) {
    return movieLibrary().mpv_stream_cb_add_ro(
               player, kProtocol, this,
               [](void* self, char* address, mpv_stream_cb_info* info) { return open(self, address, info); }) >= 0;
}

std::string MovieSource::begin(const std::string& path) {
    giveUp();
    const std::lock_guard lock(mutex_);
    file_ = std::make_shared<File>();
    file_->path = path;
    // With the number, so that it is told from the same file before; with the name, by whose ending formats are told.
    file_->address = std::string(kProtocol) + "://" + std::to_string(++number_) + path;
    return file_->address;
}

std::string MovieSource::lend(const std::string& name, std::string bytes) {
    const std::lock_guard lock(mutex_);
    if (!file_) return {};
    const std::lock_guard fileLock(file_->mutex);
    const std::string address = std::string(kProtocol) + "://" + std::to_string(number_) + '+' +
                                std::to_string(file_->lent.size()) + '/' + name;
    file_->lent[address] = std::make_shared<const std::string>(std::move(bytes));
    return address;
}

void MovieSource::giveUp() {
    const std::lock_guard lock(mutex_);
    if (file_) file_->givenUp = true;
}

void MovieSource::opened() {
    const std::lock_guard lock(mutex_);
    if (file_) file_->opened = true;
}

std::string MovieSource::failure() const {
    const std::lock_guard lock(mutex_);
    if (!file_) return {};
    const std::lock_guard fileLock(file_->mutex);
    return file_->failure;
}

std::int64_t MovieSource::size() const {
    const std::lock_guard lock(mutex_);
    return file_ ? file_->size.load() : 0;
}

/// Nothing was lent under an address that another file has overtaken.
int MovieSource::openLent(File& file, const char* address, void* info) {
    const std::lock_guard lock(file.mutex);
    const auto found = file.lent.find(address);
    if (found == file.lent.end()) return MPV_ERROR_LOADING_FAILED;
    *static_cast<mpv_stream_cb_info*>(info) = {
        new Lent{found->second, 0}, Lent::read, Lent::seek, Lent::size, Lent::close, nullptr};
    return 0;
}

int MovieSource::open(void* self, char* address, void* info) {
    MovieSource& source = *static_cast<MovieSource*>(self);
    std::shared_ptr<File> file;
    {
        const std::lock_guard lock(source.mutex_);
        if (!source.file_) return MPV_ERROR_LOADING_FAILED;
        if (source.file_->address != address) return openLent(*source.file_, address, info);
        file = source.file_;
    }
    std::string reason;
    auto bytes = DriveFile::open(file->path, {DriveCalls::kLongPatience, &file->givenUp}, reason);
    if (!bytes) {
        file->fail(reason);
        return MPV_ERROR_LOADING_FAILED;
    }
    file->size = bytes->size();
    auto* const stream = new Stream{file, std::move(bytes)};
    // Not told of the library's own cancelling, which may come after close(); whoever makes it stop calls giveUp().
    *static_cast<mpv_stream_cb_info*>(info) = {stream,       Stream::read,  Stream::seek,
                                               Stream::size, Stream::close, nullptr};
    return 0;
}

}  // namespace corvane
