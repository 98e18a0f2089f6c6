// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/mci_command_control.h"

#include <utility>

namespace corvane {

void MciCommandControl::Command(std::string_view command) {
    if (command != "Open" && !isOpen()) return;
    const Place from = std::exchange(from_, std::nullopt);
    const Place to = std::exchange(to_, std::nullopt);
    if (command == "Open") {
        openDevice();
    } else if (command == "Close") {
        closeDevice();
    } else if (command == "Play") {
        play(from, to);
    } else if (command == "Pause") {
        pause();
    } else if (command == "Stop") {
        stop();
    } else if (command == "Seek") {
        seek(to.value_or(0));
    } else {
        from_ = from;
        to_ = to;
    }
}

}  // namespace corvane
