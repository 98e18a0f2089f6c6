// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "listedit/frmFileList.h"
#include "types/kind_facts.h"
#include "types/tag_text.h"

// What the rows of the editor's list show besides their names: small pictures, and columns where there is room.

namespace corvane {

namespace {

bool isPictureFile(const Player& player, const std::string& path) {
    return isPicture(player.types.toOpen(mdlPublicFunction::typeOf(player.conveniences, path)).kind);
}

}  // namespace

void frmFileList::tieDetails() {
    lstFileList[0].pictureFileOf = [this](int row) {
        if (row >= lstFileList[1].count() || !isPictureFile(player_, lstFileList[1].item(row))) return std::string();
        return lstFileList[1].item(row);
    };
    lstFileList[0].detailOf = [this](int row, int column) { return detail(row, column); };
    lstFileList[0].rowsSeen = [this](int first, int last) {
        firstSeen_ = first;
        lastSeen_ = last;
        wantTexts();
    };
    // The player's own rule of what it reads holds for the columns as well.
    layout_.offer(player_.conveniences.texts && player_.ports.texts != nullptr, player_.ports.lengths != nullptr);
}

/// Columns and pictures as the window's size and the list ask for them.
void frmFileList::showDetails() {
    const std::vector<std::string>& paths = lstFileList[1].items();
    const bool pictures = std::any_of(paths.begin(), paths.end(),
                                      [this](const std::string& path) { return isPictureFile(player_, path); });
    lstFileList[0].show(layout_.columns(), pictures);
    fitHorizontalRange();
    wantTexts();
}

std::string frmFileList::detail(int row, int column) const {
    const std::vector<RowDetail>& shown = layout_.details();
    if (row >= lstFileList[1].count() || column < 0 || static_cast<std::size_t>(column) >= shown.size()) return {};
    const std::string& path = lstFileList[1].item(row);
    const RowDetail which = shown[static_cast<std::size_t>(column)];
    if (which == kLengthDetail) {
        const auto length = lengths_.of(path);
        return length ? lengthText(*length) : std::string();
    }
    const FileTexts* const texts = texts_.of(path);
    if (texts == nullptr) return {};
    return which == kTitleDetail ? texts->title : which == kArtistDetail ? texts->artist : texts->album;
}

/// The texts of the rows that are seen, where the columns show any.
void frmFileList::wantTexts() {
    std::vector<std::string> files;
    const std::vector<RowDetail>& shown = layout_.details();
    if (std::find(shown.begin(), shown.end(), kTitleDetail) != shown.end()) {
        for (int row = std::max(firstSeen_, 0); row <= lastSeen_ && row < lstFileList[1].count(); ++row) {
            if (!isPictureFile(player_, lstFileList[1].item(row))) files.push_back(lstFileList[1].item(row));
        }
    }
    texts_.want(files);
}

void frmFileList::readTexts(const std::string& file, const std::function<void(FileTexts)>& done) {
    player_.ports.texts->read(file, TextReader::What::Words, [done](FileTexts texts) {
        for (std::string* const text : {&texts.title, &texts.artist, &texts.album}) *text = tagText(*text);
        texts.cover = nullptr;  // no row shows it
        done(std::move(texts));
    });
}

}  // namespace corvane
