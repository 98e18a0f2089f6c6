// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmFind.h"

#include <algorithm>
#include <numeric>

#include "engine/mdlPublicFunction.h"
#include "types/characters.h"
#include "types/folding.h"
#include "types/numbers.h"
#include "types/text.h"

namespace corvane {

using mdlPublicFunction::playEntry;

namespace {

constexpr Twips pixels(int count) { return static_cast<Twips>(count) * kTwipsPerPixel; }

constexpr Twips kWidth = pixels(420), kHeight = pixels(340);
constexpr Twips kMinWidth = pixels(300), kMinHeight = pixels(200);
constexpr Twips kMargin = pixels(12), kGap = pixels(8);
constexpr Twips kFieldHeight = pixels(26), kTextHeight = pixels(18);
constexpr Twips kCommandWidth = pixels(88);
constexpr Twips kAbovePanel = pixels(48);  ///< room for the title bar, and some
constexpr int kPageRows = 10;

void placeAt(Control& control, Twips left, Twips top, Twips width, Twips height) {
    control.Move(left, top);
    control.SetSize(width, height);
}

}  // namespace

FindControls::FindControls()
    : Form("frmFind", FormStyle::Dialog),
      lblFind(this, "lblFind"),
      txtFind(this, "txtFind"),
      lstFind(this, "lstFind"),
      lblCount(this, "lblCount"),
      cmdFind(controlArray<CommandButton, 2>(this, "cmdFind")) {
    Caption = "Corvane - Find";
    lblFind.Caption = "Find";
    lblFind.Labels = &txtFind;
    txtFind.AccessibleName = "Find";
    txtFind.MaxLength = text::kMostToFind;
    lstFind.AccessibleName = "Found";
    cmdFind[kPlayFound].Caption = "Play";
    cmdFind[kPlayFound].Default = true;
    cmdFind[kClose].Caption = "Close";
    cmdFind[kClose].Cancel = true;
    int next = 0;
    for (Control* each : std::initializer_list<Control*>{&txtFind, &lstFind, &cmdFind[kPlayFound], &cmdFind[kClose]}) {
        each->TabIndex = next++;
    }
    Resizable = true;
    MinWidth = kMinWidth;
    MinHeight = kMinHeight;
    SetSize(kWidth, kHeight);
    place();
}

void FindControls::place() {
    const Twips width = Width - 2 * kMargin;
    const Twips bottom = Height - kMargin - kFieldHeight;
    const Twips listTop = kMargin + kTextHeight + kFieldHeight + kGap;
    placeAt(lblFind, kMargin, kMargin, width, kTextHeight);
    placeAt(txtFind, kMargin, kMargin + kTextHeight, width, kFieldHeight);
    placeAt(lstFind, kMargin, listTop, width, bottom - kMargin - listTop);
    const Twips right = Width - kMargin - kCommandWidth;
    placeAt(cmdFind[kClose], right, bottom, kCommandWidth, kFieldHeight);
    placeAt(cmdFind[kPlayFound], right - kGap - kCommandWidth, bottom, kCommandWidth, kFieldHeight);
    const Twips counted = right - 2 * kGap - kCommandWidth - kMargin;
    placeAt(lblCount, kMargin, bottom + (kFieldHeight - kTextHeight) / 2, counted, kTextHeight);
}

frmFind::frmFind(Player& player)
    : player_(player), still_(player.ports.loop, EventLoop::When::Still, [this] { followList(); }) {
    Load.tie([this] { Form_Load(); });
    Unload.tie([&player] { player.texts.stopGathering(); });
    Resize.tie([this] { place(); });
    CloseRequest.tie([&player](bool /*altHeld*/) { player.forms.unload(kId); });
    KeyDown.tie([this](const KeyArgs& key) {
        if (key.keyCode == kKeyF1 && key.shift == 0) player_.ports.dialogs.help();
    });
    txtFind.Change.tie([this] { narrow(); });
    txtFind.KeyDown.tie([this](const KeyArgs& key) { txtFind_KeyDown(key); });
    lstFind.DblClick.tie([this] { playChosen(); });
    // Two files of one name can only be told apart by where they are.
    lstFind.tipOf = [this](int index) {
        const auto at = static_cast<std::size_t>(index);
        return at < rows_.size() ? player_.gFilePath[static_cast<std::size_t>(rows_[at])] : std::string();
    };
    cmdFind[kPlayFound].Click.tie([this] { playChosen(); });
    cmdFind[kClose].Click.tie([&player] { player.forms.unload(kId); });
}

void frmFind::Form_Load() {
    if (const auto* panel = player_.forms.find<MainPanelControls>()) {
        Move(panel->Left + (panel->Width - Width) / 2, panel->Top - Height - kAbovePanel);
    }
    takeList();
    narrow();
}

frmFind::Seen frmFind::seenNow() const { return {player_.lists, player_.shuffles, player_.gFileCount}; }

frmFind::Folded frmFind::foldedOf(std::size_t entry) const {
    const std::string& path = player_.gFilePath[entry];
    const std::size_t name = path.rfind(player_.ports.files.separator());
    // A line break stands in no word, so that none is found across two texts.
    std::string texts = player_.gFileTitle[entry] + '\n';
    texts += name == std::string::npos ? path : path.substr(name + 1);
    Folded folded{text::folded(texts), 0};
    folded.named = folded.text.size();
    const std::string words = player_.texts.words(path);
    if (!words.empty()) folded.text += '\n' + text::folded(words);
    return folded;
}

/// Everything is folded once: typing then only looks. What the files say of themselves comes as it is read.
void frmFind::takeList() {
    seen_ = seenNow();
    fresh_.clear();
    folded_.clear();
    const auto count = static_cast<std::size_t>(seen_.count);
    folded_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) folded_.push_back(foldedOf(i));
    const std::vector<std::string> paths(player_.gFilePath.begin(), player_.gFilePath.begin() + seen_.count);
    player_.texts.gather(paths, [this](const std::string& path) { takeWords(path); });
}

void frmFind::takeWords(const std::string& path) {
    constexpr std::int64_t kShowMs = 250;
    fresh_.insert(path);
    const std::int64_t now = player_.ports.clock.milliseconds();
    if (player_.texts.leftToGather() > 0 && now - shownAt_ < kShowMs) return;
    shownAt_ = now;
    showMore();
}

/// More may be found now. The entry that is chosen stays so.
void frmFind::showMore() {
    if (seenNow() != seen_) return;  // another list has come, and is followed soon
    for (std::size_t i = 0; i < folded_.size(); ++i) {
        if (fresh_.count(player_.gFilePath[i]) > 0) folded_[i] = foldedOf(i);
    }
    fresh_.clear();
    const std::vector<int> entries = found(text::wordsToFind(txtFind.Text.get()));
    if (entries == rows_) return showCount();
    const auto chosen = static_cast<std::size_t>(lstFind.ListIndex);
    show(entries, chosen < rows_.size() ? rows_[chosen] : -1);
}

std::vector<int> frmFind::found(const std::vector<std::string>& words) const {
    std::vector<int> entries;
    for (std::size_t i = 0; i < folded_.size(); ++i) {
        if (text::holdsAll(folded_[i].text, words)) entries.push_back(static_cast<int>(i));
    }
    return entries;
}

void frmFind::narrow() {
    const std::vector<std::string> words = text::wordsToFind(txtFind.Text.get());
    show(found(words), words.empty() ? player_.gFileIndex : -1);
}

namespace {

/// A text that is not what was looked for leaves room for what is.
std::string shortened(std::string_view line) {
    constexpr int kMostCharacters = 24;
    std::size_t end = 0;
    for (int count = 0; count < kMostCharacters && end < line.size(); ++count) {
        end += std::max<std::size_t>(1, text::firstCharacter(line.substr(end)).bytes);
    }
    return end < line.size() ? std::string(line.substr(0, end)) + "…" : std::string(line);
}

}  // namespace

/// Of an entry that its name alone would not show: what its tags say first, and each line of them that holds a word.
/// "": the name shows it.
std::string frmFind::foundBy(int entry, const std::vector<std::string>& words) const {
    const auto at = static_cast<std::size_t>(entry);
    if (text::holdsAll(folded_[at].name(), words)) return {};
    const std::string lines = player_.texts.words(player_.gFilePath[at]);
    std::string shown;
    for (std::string_view rest = lines; !rest.empty();) {
        const std::string_view line = text::takeLine(rest);
        const bool holdsOne = std::any_of(words.begin(), words.end(), [plain = text::folded(line)](const auto& word) {
            return plain.find(word) != std::string::npos;
        });
        if (shown.empty() && !holdsOne) {
            shown = shortened(line);
        } else if (holdsOne) {
            shown.append(shown.empty() ? "" : " - ").append(line);
        }
    }
    return shown;
}

std::string frmFind::row(int entry, const std::vector<std::string>& words) const {
    const int digits = static_cast<int>(std::to_string(seen_.count).size());
    const std::string& title = player_.gFileTitle[static_cast<std::size_t>(entry)];
    const std::string why = foundBy(entry, words);
    // What was looked for stands in front: a long row is cut at its end.
    return zeroPadded(entry + 1, std::max(digits, 3)) + "  " + (why.empty() ? title : why + "  (" + title + ')');
}

/// current: the entry that is chosen; where it is not among them, the first one is.
void frmFind::show(const std::vector<int>& entries, int current) {
    rows_ = entries;
    std::vector<std::string> texts;
    texts.reserve(rows_.size());
    const std::vector<std::string> words = text::wordsToFind(txtFind.Text.get());
    for (const int each : rows_) texts.push_back(row(each, words));
    lstFind.setItems(std::move(texts));
    const auto chosen = std::find(rows_.begin(), rows_.end(), current);
    const bool any = !rows_.empty();
    lstFind.ListIndex = !any ? -1 : chosen == rows_.end() ? 0 : static_cast<int>(chosen - rows_.begin());
    cmdFind[kPlayFound].Enabled = any;
    showCount();
}

void frmFind::showCount() {
    const std::string all = std::to_string(folded_.size());
    std::string text = rows_.empty() ? std::string(folded_.empty() ? "The list is empty" : "Nothing found")
                       : rows_.size() == folded_.size() ? all + (folded_.size() == 1 ? " file" : " files")
                                                        : std::to_string(rows_.size()) + " of " + all;
    const std::size_t left = player_.texts.leftToGather();
    if (left > 0) text += ", tags of " + std::to_string(left) + " left";
    lblCount.Caption = text;
}

/// The list has been replaced or shuffled: what is shown is of the new one.
void frmFind::followList() {
    if (seenNow() == seen_) return;
    takeList();
    narrow();
}

void frmFind::txtFind_KeyDown(const KeyArgs& key) {
    const int way = key.keyCode == kKeyUp       ? -1
                    : key.keyCode == kKeyDown   ? 1
                    : key.keyCode == kKeyPageUp ? -kPageRows
                                                : kPageRows;
    if (lstFind.count() > 0) lstFind.ListIndex = std::clamp(lstFind.ListIndex + way, 0, lstFind.count() - 1);
}

void frmFind::playChosen() {
    const int chosen = lstFind.ListIndex;
    if (seenNow() != seen_ || chosen < 0 || static_cast<std::size_t>(chosen) >= rows_.size()) return;
    Player& player = player_;  // this form goes
    const int entry = rows_[static_cast<std::size_t>(chosen)];
    player.forms.unload(kId);
    if (auto* panel = player.forms.find<MainPanelControls>()) player.ports.windows.activate(*panel);
    playEntry(player, entry);
}

}  // namespace corvane
