// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/memory_trim.h"

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace corvane {

namespace {

constexpr int kCalmMs = 1500;

constexpr std::uint64_t kOfFile = std::uint64_t{1} << 61;  ///< in an entry of pagemap: the file's page, not a copy
constexpr std::uint64_t kSwapped = std::uint64_t{1} << 62;
constexpr std::uint64_t kPresent = std::uint64_t{1} << 63;

/// The kernel's own word on each page of this process, so that only what the file still holds is given back.
struct PageMap {
    const int file = open("/proc/self/pagemap", O_RDONLY | O_CLOEXEC);
    const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::vector<std::uint64_t> entries;

    ~PageMap() {
        if (file >= 0) close(file);
    }
    /// Whether no page of the range was ever written: text that a library or a debugger has patched is a copy, which
    /// would be lost. Where the kernel does not tell, it counts as written.
    bool unchanged(ElfW(Addr) begin, ElfW(Addr) end) {
        entries.resize((end - begin) / page);
        const std::size_t bytes = entries.size() * sizeof(std::uint64_t);
        const auto place = static_cast<off_t>(begin / page * sizeof(std::uint64_t));
        if (file < 0 || pread(file, entries.data(), bytes, place) != static_cast<ssize_t>(bytes)) return false;
        return std::all_of(entries.begin(), entries.end(), [](std::uint64_t entry) {
            return (entry & (kPresent | kSwapped)) == 0 || (entry & kOfFile) != 0;
        });
    }
};

/// Called for each object under the linker's lock, so that none is unloaded or relocated meanwhile.
int giveBack(dl_phdr_info* object, std::size_t /*size*/, void* data) {
    if (std::string_view(object->dlpi_name).find("vdso") != std::string_view::npos) return 0;
    PageMap& map = *static_cast<PageMap*>(data);
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr)& part = object->dlpi_phdr[i];
        if (part.p_type != PT_LOAD || (part.p_flags & PF_W) != 0) continue;
        const ElfW(Addr) begin = (object->dlpi_addr + part.p_vaddr) / map.page * map.page;
        const ElfW(Addr) end = (object->dlpi_addr + part.p_vaddr + part.p_filesz + map.page - 1) / map.page * map.page;
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the linker tells its addresses as numbers
        if (map.unchanged(begin, end)) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
    }
    return 0;
}

int countLoaded(dl_phdr_info* object, std::size_t /*size*/, void* count) {
    *static_cast<unsigned long long*>(count) = object->dlpi_adds;
    return 1;
}

}  // namespace

MemoryTrim::MemoryTrim() {
    calm_.setSingleShot(true);
    calm_.setInterval(kCalmMs);
    QObject::connect(&calm_, &QTimer::timeout, [this] {
        unsigned long long loaded = 0;
        dl_iterate_phdr(countLoaded, &loaded);
        if (loaded == seen_) return;
        seen_ = loaded;
        now();
    });
}

void MemoryTrim::now() {
    PageMap map;
    dl_iterate_phdr(giveBack, &map);
    malloc_trim(0);
}

}  // namespace corvane
