// SPDX-License-Identifier: GPL-3.0-or-later
#include "drives/private_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace corvane {

PrivateFolder PrivateFolder::open(std::string path) {
    while (path.size() > 1 && path.back() == '/') path.pop_back();  // behind a link, it would be followed
    PrivateFolder folder;
    if (path.empty() || path.front() != '/') return folder;
    Descriptor opened(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    const bool isOwn = opened && fstat(opened.get(), &status) == 0 && status.st_uid == geteuid();
    if (isOwn && (status.st_mode & 0077U) == 0) folder.handle_ = std::move(opened);
    return folder;
}

PrivateFolder PrivateFolder::make(std::string path) {
    mkdir(path.c_str(), 0700);
    return open(std::move(path));
}

std::string PrivateFolder::within(const std::string& name) const {
    return "/proc/self/fd/" + std::to_string(handle_.get()) + '/' + name;
}

}  // namespace corvane
