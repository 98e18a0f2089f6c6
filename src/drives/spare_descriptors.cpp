// SPDX-License-Identifier: GPL-3.0-or-later
#include "drives/spare_descriptors.h"

#include <fcntl.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace corvane {

namespace {

constexpr rlim_t kUsualLimit = 1024;

Descriptor another() { return Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC)); }

void raiseLowLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= kUsualLimit) return;
    limit.rlim_cur = std::min(limit.rlim_max, kUsualLimit);
    setrlimit(RLIMIT_NOFILE, &limit);
}

/// A standard stream that was closed gets none: the next file would be written to by who means the stream.
void fillStandardStreams() {
    int place = -1;
    do {
        place = open("/dev/null", O_RDWR);
    } while (place >= 0 && place <= STDERR_FILENO);
    const Descriptor behind(place);
}

bool canHave(int count) {
    std::vector<Descriptor> had;
    while (count-- > 0) {
        had.push_back(another());
        if (!had.back()) return false;
    }
    return true;
}

}  // namespace

/// Never destroyed: the program's last windows go when it does.
SpareDescriptors& SpareDescriptors::all() {
    static auto* const spare = new SpareDescriptors;
    return *spare;
}

bool SpareDescriptors::keep() {
    raiseLowLimit();
    fillStandardStreams();
    SpareDescriptors& spare = all();
    const std::lock_guard lock(spare.mutex_);
    spare.kept_ = true;
    spare.fill();
    return canHave(kLeast);
}

const char* SpareDescriptors::reason(const char* otherwise) { return another() || !refused() ? otherwise : kNoneLeft; }

bool SpareDescriptors::refused() { return errno == EMFILE || errno == ENFILE; }

void SpareDescriptors::give() {
    const std::lock_guard lock(mutex_);
    // One that is free now may be taken by another thread before the window is handed its memory.
    if (!kept_ || loans_++ > 0 || canHave(static_cast<int>(kCount)) || !refused()) return;
    given_ = true;  // before there is room: who finds it now is told that it is not his
    for (Descriptor& one : held_) one.close();
}

void SpareDescriptors::takeBack() {
    const std::lock_guard lock(mutex_);
    if (!kept_ || --loans_ > 0) return;
    fill();
    given_ = false;
}

void SpareDescriptors::fill() {
    for (Descriptor& one : held_) {
        if (!one) one = another();
    }
}

}  // namespace corvane
