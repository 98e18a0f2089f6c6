// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

/// What was asked of the machine, in order: "mci.Command Play", "windows.SetWindowPos frmMainPanel -1 53".
/// Questions that change nothing (a position read) are kept apart, so that a sequence shows what was done.
class CallLog {
public:
    void did(std::string call) { entries_.push_back({std::move(call), false}); }
    void asked(std::string call) { entries_.push_back({std::move(call), true}); }

    /// Calls that act.
    std::vector<std::string> calls() const { return select({}, false); }
    /// Calls that act, of one port: calls("mci") has "mci.Command Play" but not "movie.Run".
    std::vector<std::string> calls(std::string_view port) const { return select(port, false); }
    /// All calls, questions included.
    std::vector<std::string> allCalls() const { return select({}, true); }
    std::vector<std::string> allCalls(std::string_view port) const { return select(port, true); }
    /// How often exactly this call was made.
    int count(std::string_view call) const;
    void clear() { entries_.clear(); }

private:
    struct Entry {
        std::string call;
        bool question;
    };
    std::vector<std::string> select(std::string_view port, bool questions) const;

    std::vector<Entry> entries_;
};

}  // namespace corvane
