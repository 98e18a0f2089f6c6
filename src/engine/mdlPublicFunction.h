// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/player.h"

/// The playback procedures. All run on the user-interface thread and take the player they act on.
namespace corvane::mdlPublicFunction {

// --- Names and kinds -------------------------------------------------------------------------------------------------

/// Text after the first "." of the whole path, in capitals (text::capitals); a path without a dot: the whole path in
/// capitals.
std::string GetExtension(std::string_view path);
/// Text before the first "."; a path without a dot: the whole path.
std::string GetBaseName(std::string_view path);
/// A file's type, in capitals, and its title, by the way that is in force: the two above, or with `names` what follows
/// and what is before the last dot of the file's own name, folders and hidden files' first dots left alone. A file
/// without such a dot has no type; its title is its whole name.
std::string typeOf(const Conveniences& ways, std::string_view path);
std::string titleOf(const Conveniences& ways, std::string_view name);
/// Adds today's types; the decoders are asked when one is first looked for.
void addTypesOfToday(Player& player);
/// A list takes files of that name, where there are any.
bool isPlayed(const Player& player, std::string_view path);
/// A path whose doubled separator starts at its third character loses one of the two.
std::string withoutDoubledSeparator(std::string path, char separator);

// --- Opening and transport -------------------------------------------------------------------------------------------

void PlayFile(Player& player);
void PauseFile(Player& player);
void NextFile(Player& player);
void PrevFile(Player& player);
/// NextFile and PrevFile for those who have no step buttons: always another file, also while paused, and at the first
/// press; a paused player stays paused.
void skipToNext(Player& player);
void skipToPrevious(Player& player);
/// NextFile would go to another file.
bool canGoForward(const Player& player);
void CloseFile(Player& player, bool keepImage);
/// Plays that entry of the list from its beginning, whatever played before. Nothing where the list has no such entry.
void playEntry(Player& player, int entry);
void ShuffleList(Player& player);
/// The list may begin by itself soon: what its first file needs is made ready.
void prepareFirst(Player& player);
/// The open file cannot be decoded or cannot go on: it is let go, and the box of a file that cannot be opened asks,
/// with the reason. When its list has been replaced since, there is nothing to try again or to go on to: the box only
/// tells, and the player is stopped.
void mediaFailed(Player& player, const std::string& reason);
/// A list has replaced another: what belonged to the old one is void (custom positions, a press of previous, an answer
/// that a box waits for). What plays goes on; when nothing is open, the player is stopped.
void listReplaced(Player& player);
/// That opening's file is still the one that is open; its list may have been replaced.
bool isStillOpen(const Player& player, const Opening& opening);

/// Shows a replaced list on the panel: file number "001", first title and total; all three empty for an empty list.
void showList(Player& player);
/// Replaces the list by the files, in order, by the rules of a drop on the panel. Returns how many were taken.
int takeFiles(Player& player, const DropData& dropped);
/// Replaces the list by the files and plays its first one, whatever played before. False: none of them can be taken;
/// nothing was done. What folders and lists hold comes later, where nobody waits for it.
bool openFiles(Player& player, const std::vector<std::string>& files);
/// A drop with the convenience PLAYS: its files replace the list and the first one plays; with Shift they are added to
/// its end, and what plays goes on. Of one without a file that is played a box says why, and nothing changes.
void playDropped(Player& player, const DropData& dropped);
/// What the files that a person gave are to become.
enum class Given {
    AsList,   ///< they are the list, played or not
    AtStart,  ///< the same, and it begins; where there is none, with PLAYS, a box says why
    ToOpen,   ///< their first one plays; where there is none, nothing happens but, with PLAYS, a box that says why
    ToPlay,   ///< their first one plays; where there is none, a box says why
    ToAdd     ///< they come behind the list's end; where there is none, a box says why
};
/// Takes them, at once, or by Player::reading where they may be many: then the player stays as it is until all are
/// found. What replaces the list replaces what is still being read, and is given up when another list comes.
void giveFiles(Player& player, const std::vector<std::string>& named, Given how);
/// Files that a start was given: the list, empty until they are found; with `plays` it begins.
void giveAtStart(Player& player, const std::vector<std::string>& named, bool plays);
/// What is read for the list is given up, and what is open is closed.
void stopAll(Player& player);
/// "1 file", "20 files"
std::string filesText(std::size_t count);
/// The entries have moved or changed: no custom start or stop position belongs to one any more.
void clearCustomPositions(Player& player);

// --- Times -----------------------------------------------------------------------------------------------------------

std::string MsecToText(std::int32_t msec);
std::string TmsfToText(std::int32_t tmsf);
/// One second back in packed CD form: from second 0 to second 59 of the minute before; 00:00 stays.
std::int32_t tmsfSecondBack(std::int32_t tmsf);

/// Whole seconds of a packed position, by its minutes and seconds bytes.
std::int32_t packedSeconds(std::int32_t tmsf);

/// Width of the slider's bar for a position in a file: full past the length, 15 twips when the length is 0.
float sliderWidth(const Player& player, double position, double length);

// --- Volume ----------------------------------------------------------------------------------------------------------

/// One step up (down = 0) or down; places the indicator and sets the device.
void SetVolume(Player& player, std::int16_t down);
/// Sets the level (0 to 15) on the device and the indicator.
void setVolumeLevel(Player& player, std::int16_t level);
/// Level of a volume word read from the device, by the thresholds half-way between the levels.
std::int16_t volumeLevel(std::uint32_t word);
/// The level's word: both channels level x 0x1111.
std::uint32_t volumeWord(std::int16_t level);
/// Draws the indicator at gVolume's angle.
void placeIndicator(const mdlDefinePublic::PlayerState& state, MainPanelControls& panel);
void placeIndicator(Player& player);  ///< the same, on the panel that is loaded
/// The level that the pointer at (x, y), twips from the knob image's corner, chooses; empty: the move is ignored.
std::optional<std::int16_t> knobLevel(const Player& player, float x, float y);
/// The volume word of the chosen device; empty: it cannot be read.
std::optional<std::uint32_t> readVolume(Player& player);
void writeVolume(Player& player, std::uint32_t word);
/// Takes the level of the chosen device, to be put back at the end; nothing where it cannot be read.
void findVolume(Player& player);
/// Sets the volume that was found at the start, once, and where it was found: not on an output that came into use
/// since.
void putVolumeBack(Player& player);
/// Takes the level of the output in use as its knob, which another program may have turned. Sets nothing.
void followVolume(Player& player);
/// gAuxType -2: takes the first auxiliary device, or the last one whose product identifier is 8.
void chooseVolumeDevice(Player& player);

// --- What several forms share ----------------------------------------------------------------------------------------

void toggleRepeat(Player& player);
/// The eleven command keys, in their order; false when none matched.
bool commandKey(Player& player, int character);
/// The fixed keys: F1 (help), Alt+F4 and Alt alone, for the panel and the media windows.
void fixedKeyDown(Player& player, const KeyArgs& key);
void fixedKeyUp(Player& player, const KeyArgs& key);
/// Stops, disables the power button and unloads the panel, which ends the program.
void powerOff(Player& player);
void showPopupMenu(Player& player);
/// Shows a box titled "Corvane"; posted events wait until it is answered.
Answer messageBox(Player& player, const std::string& text, Buttons buttons, Icon icon);
/// SetWindowPos without move, size or activation; show not 0 shows the window, 0 hides it.
void SetWindowZOrder(Player& player, Form& window, int insertAfter, std::int16_t show);
/// Shows a lamp's on or off picture (the lamp's image is followed by its off and its on picture).
void lightLamp(MainPanelControls& panel, int lamp, bool on);
/// Writes a label of the panel; while the panel is not loaded the caption is kept for it.
void setPanelCaption(Player& player, int label, const std::string& caption);

}  // namespace corvane::mdlPublicFunction
