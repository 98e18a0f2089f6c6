// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "fake/player_fixture.h"

namespace corvane {

/// A panel on which files are dropped.
struct Dropping : PlayerFixture {
    void drop(std::vector<std::string> files, bool toAdd = false) {
        act([&] { panel().OLEDragDrop.raise({true, std::move(files), false, toAdd}); });
    }
};

}  // namespace corvane
