// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/printable.h"

#include <algorithm>

#include "types/characters.h"

namespace corvane {

std::string printable(std::string_view given) {
    std::string shown;
    while (!given.empty()) {
        const text::Character next = text::firstCharacter(given);
        const bool harmless = next.bytes > 0 && !text::isControl(next.code) && !text::turnsAround(next.code);
        shown += harmless ? given.substr(0, next.bytes) : std::string_view("?");
        // Of what is no character, each byte counts; of what may not be shown as well.
        given.remove_prefix(harmless ? next.bytes : 1);
    }
    return shown;
}

}  // namespace corvane
