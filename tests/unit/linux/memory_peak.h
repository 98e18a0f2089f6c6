// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <malloc.h>

#include <fstream>
#include <string>

namespace corvane::test {

/// By how much the resident memory of this process grew at its highest since this was made.
class MemoryPeak {
public:
    MemoryPeak() {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";  // the peak is what is resident now
        before_ = kilobytes("VmRSS:");
    }
    long megabytes() const { return (kilobytes("VmHWM:") - before_) / 1024; }

private:
    static long kilobytes(const std::string& name) {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;) {
            long value = 0;
            if (word == name && status >> value) return value;
        }
        return 0;
    }
    long before_ = 0;
};

}  // namespace corvane::test
