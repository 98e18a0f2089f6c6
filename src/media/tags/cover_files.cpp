// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/tags/cover_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

namespace {

constexpr std::string_view kBegin = "cover-";

std::uint64_t hashOf(std::string_view bytes) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    return hash;
}

bool writeAll(const Descriptor& to, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t done = write(to.get(), bytes.data(), bytes.size());
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(done));
    }
    return true;
}

/// Of a name "cover-PID-NUMBER.jpg" whose process is gone.
bool isLeft(std::string_view name) {
    if (!name.starts_with(kBegin)) return false;
    const std::string process(name.substr(kBegin.size(), name.find('-', kBegin.size()) - kBegin.size()));
    if (process.empty() || process.find_first_not_of("0123456789") != std::string::npos) return false;
    return process == std::to_string(getpid()) || access(("/proc/" + process).c_str(), F_OK) != 0;
}

void removeLeft(int folder) {
    DIR* const names = fdopendir(openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (names == nullptr) return;
    std::vector<std::string> left;
    while (const dirent* const entry = readdir(names)) {
        if (isLeft(entry->d_name)) left.emplace_back(entry->d_name);
    }
    closedir(names);
    for (const std::string& name : left) unlinkat(folder, name.c_str(), 0);
}

}  // namespace

struct CoverFiles::Shelf {
    explicit Shelf(std::string path) : place(PrivateFolder::open(path)), folder(std::move(path)) {}

    const PrivateFolder place;
    const std::string folder;
    std::mutex mutex;  ///< guards what follows
    std::map<std::uint64_t, std::weak_ptr<const CoverFile>> files;
    std::size_t bytes = 0;
    std::uint64_t made = 0;
};

class CoverFiles::Written : public CoverFile {
public:
    Written(std::shared_ptr<Shelf> shelf, std::string name, std::size_t bytes)
        : CoverFile(shelf->folder + '/' + name), shelf_(std::move(shelf)), name_(std::move(name)), bytes_(bytes) {}
    ~Written() override {
        unlinkat(shelf_->place.handle(), name_.c_str(), 0);
        const std::lock_guard lock(shelf_->mutex);
        shelf_->bytes -= bytes_;
    }

private:
    std::shared_ptr<Shelf> shelf_;
    std::string name_;
    std::size_t bytes_;
};

CoverFiles::CoverFiles(std::string runtimeFolder) : shelf_(std::make_shared<Shelf>(std::move(runtimeFolder))) {
    if (shelf_->place) removeLeft(shelf_->place.handle());
}

std::shared_ptr<const CoverFile> CoverFiles::keep(const std::string& bytes) {
    if (!shelf_->place || bytes.empty()) return nullptr;
    const std::uint64_t hash = hashOf(bytes);
    std::string name;
    {
        const std::lock_guard lock(shelf_->mutex);
        std::erase_if(shelf_->files, [](const auto& one) { return one.second.expired(); });
        if (const auto found = shelf_->files.find(hash); found != shelf_->files.end()) {
            if (auto kept = found->second.lock()) return kept;
        }
        if (bytes.size() > kMostBytes - shelf_->bytes) return nullptr;
        shelf_->bytes += bytes.size();
        const char* const ending = bytes.front() == '\x89' ? ".png" : ".jpg";
        name = std::string(kBegin) + std::to_string(getpid()) + '-' + std::to_string(++shelf_->made) + ending;
    }
    auto written =
        std::make_shared<const Written>(shelf_, name, bytes.size());  // takes the bytes back where that fails
    Descriptor to(
        openat(shelf_->place.handle(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!to || !writeAll(to, bytes) || !to.close()) return nullptr;
    const std::lock_guard lock(shelf_->mutex);
    shelf_->files[hash] = written;
    return written;
}

}  // namespace corvane
