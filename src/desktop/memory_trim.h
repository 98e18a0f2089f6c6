// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>

namespace corvane {

/// Gives the pages back that only loading a program or library needed: text and tables that were never changed (the
/// kernel is asked), which it has in its cache anyway and maps again, one by one, when they are used. Half of a
/// library's pages are touched by the dynamic linker alone. Lives on the user-interface thread.
class MemoryTrim {
public:
    MemoryTrim();

    /// Does it in a while, when things have calmed down, if a library has been loaded since the last time.
    void later() { calm_.start(); }
    /// Does it now; any thread.
    static void now();

private:
    QTimer calm_;
    unsigned long long seen_ = 0;  ///< libraries loaded when it was done last
};

}  // namespace corvane
