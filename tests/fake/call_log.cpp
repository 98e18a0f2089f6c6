// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/call_log.h"

namespace corvane {

int CallLog::count(std::string_view call) const {
    int found = 0;
    for (const Entry& entry : entries_) {
        if (entry.call == call) ++found;
    }
    return found;
}

std::vector<std::string> CallLog::select(std::string_view port, bool questions) const {
    std::vector<std::string> result;
    for (const Entry& entry : entries_) {
        if (entry.question && !questions) continue;
        const std::string_view call = entry.call;
        const bool ofPort = call.substr(0, port.size()) == port && call.substr(port.size(), 1) == ".";
        if (port.empty() || ofPort) result.push_back(entry.call);
    }
    return result;
}

}  // namespace corvane
