// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/player.h"
#include "fake/fake_machine.h"
#include "fuzz.h"
#include "storage/resume.h"
#include "types/folding.h"

namespace corvane {
namespace {

using fuzz::require;

/// What is read makes sense, and comes back when it is written.
void checkText(std::string_view text) {
    const ResumeText kept = readResumeText(text);
    require(kept.list.size() <= static_cast<std::size_t>(mdlDefinePublic::kMaxLongFiles), "at most 9,999 entries");
    require(kept.places.size() <= kMostPlaces, "at most 200 places");
    require(kept.entry >= 0 && (kept.entry == 0 || static_cast<std::size_t>(kept.entry) < kept.list.size()),
            "the entry is of the list");
    require(!kept.openAtUs || *kept.openAtUs >= 0, "no time before the beginning");
    require(readResumeText(resumeText(kept)) == kept, "what was read comes back");
}

/// A start takes as much of it as a list holds.
void checkStart(std::string_view text) {
    FakeMachine machine;
    Ports ports = machine.ports();
    Player player(ports);
    player.conveniences.resume = true;
    player.gIniFile = "/app/KADO.INI";
    machine.files.add("/app/RESUME.INI", std::string(text));
    if (!takeRemembered(player, true)) return;
    require(player.gFileCount > 0 && player.gFileCount <= mdlDefinePublic::kMaxFiles, "as much as a list holds");
    require(player.gFileIndex < player.gFileCount, "the entry is of the list");
}

/// Folding is done once: a folded text stays, and a text is found in itself.
void checkFolding(std::string_view text) {
    const std::string plain = text::folded(text);
    require(plain.size() <= text.size(), "a text never grows");
    require(text::holdsAll(plain, text::wordsToFind(text)), "a text is found in itself");
}

}  // namespace
}  // namespace corvane

/// A text behind a byte that says who reads it.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    switch (input.byte() % 3) {
        case 0:
            checkText(input.rest());
            break;
        case 1:
            checkStart(input.rest());
            break;
        default:
            checkFolding(input.rest());
            break;
    }
    return 0;
}
