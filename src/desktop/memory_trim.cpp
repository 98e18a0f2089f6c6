// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/memory_trim.h"

#include <elf.h>
#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string_view>

namespace corvane {

namespace {

constexpr int kCalmMs = 1500;

/// A library whose text was changed when it was loaded: its pages are its own, and would be lost.
bool textWasChanged(const dl_phdr_info& object) {
    for (int i = 0; i < object.dlpi_phnum; ++i) {
        if (object.dlpi_phdr[i].p_type != PT_DYNAMIC) continue;
        const auto* entry = reinterpret_cast<const ElfW(Dyn)*>(object.dlpi_addr + object.dlpi_phdr[i].p_vaddr);
        for (; entry->d_tag != DT_NULL; ++entry) {
            if (entry->d_tag == DT_TEXTREL) return true;
            if (entry->d_tag == DT_FLAGS && (entry->d_un.d_val & DF_TEXTREL) != 0) return true;
        }
    }
    return false;
}

/// Called for each object under the linker's lock, so that none is unloaded meanwhile.
int giveBack(dl_phdr_info* object, std::size_t /*size*/, void* /*unused*/) {
    if (std::string_view(object->dlpi_name).find("vdso") != std::string_view::npos || textWasChanged(*object)) return 0;
    const auto page = static_cast<ElfW(Addr)>(sysconf(_SC_PAGESIZE));
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr)& part = object->dlpi_phdr[i];
        if (part.p_type != PT_LOAD || (part.p_flags & PF_W) != 0) continue;
        const ElfW(Addr) begin = (object->dlpi_addr + part.p_vaddr) / page * page;
        const ElfW(Addr) end = (object->dlpi_addr + part.p_vaddr + part.p_filesz + page - 1) / page * page;
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
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
    dl_iterate_phdr(giveBack, nullptr);
    malloc_trim(0);
}

}  // namespace corvane
