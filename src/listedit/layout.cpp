// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/layout.h"

#include <algorithm>

#include "listedit/frmFileList.h"

namespace corvane {

namespace {

constexpr Twips pixels(int count) { return static_cast<Twips>(count) * kTwipsPerPixel; }

constexpr Twips kStatusHeight = pixels(34);  ///< the last line, below all that there has always been
constexpr Twips kWidth = pixels(860), kHeight = pixels(520) + kStatusHeight;
constexpr Twips kMinWidth = pixels(760), kMinHeight = pixels(380) + kStatusHeight;
constexpr Twips kFirstSplit = pixels(206);

constexpr Twips kMargin = pixels(12);
constexpr Twips kGap = pixels(8);       ///< between neighbours
constexpr Twips kSplitter = pixels(8);  ///< width of the splitter
constexpr Twips kHeadingHeight = pixels(18);
constexpr Twips kFieldHeight = pixels(26);
constexpr Twips kCommandWidth = pixels(88);
constexpr Twips kPlayListWidth = pixels(308);    ///< in a window of the first size
constexpr Twips kMostNumberWidth = pixels(120);  ///< of "Page 10"
constexpr Twips kStepperWidth = pixels(48);
constexpr Twips kChoiceWidth = pixels(122);
constexpr Twips kFindWidth = pixels(150);
constexpr Twips kNextWidth = pixels(64);

// The play list's columns: the names keep so much, and each column gets its share of what is left.
constexpr Twips kNameColumn = pixels(210);
constexpr Twips kTextColumn = pixels(130);
constexpr Twips kLengthColumn = pixels(64);
constexpr Twips kScrollRoom = pixels(20);

constexpr Twips kFieldTop = kMargin + kHeadingHeight;
constexpr Twips kListHeadingTop = kFieldTop + kFieldHeight + pixels(10);
constexpr Twips kListTop = kListHeadingTop + kHeadingHeight;

void place(Control& control, Twips left, Twips top, Twips width, Twips height) {
    control.Move(left, top);
    control.SetSize(width, height);
}

}  // namespace

void EditorLayout::setUp() {
    form_.Resizable = true;
    form_.MinWidth = kMinWidth;
    form_.MinHeight = kMinHeight;
    form_.SetSize(kWidth, kHeight);
    split_ = kFirstSplit;
    place();
}

void EditorLayout::setSplit(Twips x) {
    split_ = std::clamp(x, kLeastSplit, kMostSplit);
    placeFolders();
    placeFiles();
}

void EditorLayout::place() {
    placeFolders();
    placeFiles();
    placeCommands();
    placePlayList();
    placeBottom();
    placeStatus();
}

Twips EditorLayout::filesRight() const {
    const Twips more = (form_.Width - kWidth) / 2;
    return kWidth - kMargin - kPlayListWidth - kMargin - kCommandWidth - kMargin + more;
}

namespace {
/// Where the lists end and the bottom row begins.
Twips listBottom(const Form& form) {
    return form.Height - kStatusHeight - kMargin - kFieldHeight - kHeadingHeight - pixels(10);
}
}  // namespace

void EditorLayout::placeFolders() {
    const Twips width = split_ - kSplitter - kMargin;
    corvane::place(form_.lblFileList[FileListControls::kDriveHeading], kMargin, kMargin, width, kHeadingHeight);
    corvane::place(form_.drvFileList, kMargin, kFieldTop, width, kFieldHeight);
    corvane::place(form_.lblFileList[FileListControls::kFolderHeading], kMargin, kListHeadingTop, width,
                   kHeadingHeight);
    corvane::place(form_.dirFileList, kMargin, kListTop, width, listBottom(form_) - kListTop);
    corvane::place(form_.imgFileList, split_ - kSplitter, kListTop, kSplitter, listBottom(form_) - kListTop);
}

void EditorLayout::placeFiles() {
    const Twips width = filesRight() - split_;
    corvane::place(form_.lblFileList[FileListControls::kPatternHeading], split_, kMargin, width, kHeadingHeight);
    corvane::place(form_.cboFileList[FileListControls::kPattern], split_, kFieldTop, width, kFieldHeight);
    corvane::place(form_.lblFileList[FileListControls::kFilesHeading], split_, kListHeadingTop, width, kHeadingHeight);
    corvane::place(form_.fleFileList, split_, kListTop, width, listBottom(form_) - kListTop);
}

void EditorLayout::placeCommands() {
    Twips top = kListTop;
    for (const auto button :
         {FileListControls::kAdd, FileListControls::kAddAll, FileListControls::kDelete, FileListControls::kClear}) {
        if (button == FileListControls::kDelete) top += kGap;  // what takes away stands apart from what adds
        corvane::place(form_.cmdFileList[button], filesRight() + kMargin, top, kCommandWidth, kFieldHeight);
        top += kFieldHeight + kGap;
    }
    top += kGap;
    for (const auto button : {FileListControls::kUndo, FileListControls::kRedo}) {
        corvane::place(form_.cmdEdit[button], filesRight() + kMargin, top, kCommandWidth, kFieldHeight);
        top += kFieldHeight + kGap;
    }
}

void EditorLayout::placePlayList() {
    const Twips left = filesRight() + kMargin + kCommandWidth + kMargin;
    const Twips width = form_.Width - kMargin - left;
    const Twips number = std::min((width - kMargin) / 2 - kStepperWidth, kMostNumberWidth);
    const Twips second = left + number + kStepperWidth + kMargin;
    const Twips nameTop = listBottom(form_) - kFieldHeight;
    auto& buttons = form_.cmdFileList;
    corvane::place(buttons[FileListControls::kPage], left, kFieldTop, number, kFieldHeight);
    corvane::place(form_.hscrPageList, left + number, kFieldTop, kStepperWidth, kFieldHeight);
    corvane::place(buttons[FileListControls::kList], second, kFieldTop, number, kFieldHeight);
    corvane::place(form_.hscrFileList, second + number, kFieldTop, kStepperWidth, kFieldHeight);
    corvane::place(form_.lblFileList[FileListControls::kPlayListHeading], left, kListHeadingTop, width, kHeadingHeight);
    for (ListBox& list : form_.lstFileList) {
        corvane::place(list, left, kListTop, width, nameTop - kGap - kListTop);
    }
    placeColumns();
    corvane::place(form_.txtListName, left, nameTop, width - kCommandWidth - kGap, kFieldHeight);
    corvane::place(buttons[FileListControls::kSave], left + width - kCommandWidth, nameTop, kCommandWidth,
                   kFieldHeight);
}

/// As many columns as there is room for beside the names, their headings above them.
void EditorLayout::placeColumns() {
    const ListBox& list = form_.lstFileList[0];
    details_.clear();
    columns_.clear();
    Twips spare = list.Width - kScrollRoom - kNameColumn - kLengthColumn;
    if (spare >= kTextColumn) {
        for (const RowDetail text : {kTitleDetail, kArtistDetail, kAlbumDetail}) {
            if (!offersTexts_ || spare < kTextColumn) break;
            details_.push_back(text);
            spare -= kTextColumn;
        }
        if (offersLengths_) details_.push_back(kLengthDetail);
    }
    const auto texts = static_cast<Twips>(details_.size()) - (offersLengths_ ? 1 : 0);
    const Twips more = texts > 0 ? spare / (texts + 1) : 0;
    Twips left = list.Width - kScrollRoom - (offersLengths_ ? kLengthColumn : 0) - texts * (kTextColumn + more);
    for (Label& heading : form_.lblDetail) {
        heading.Visible = std::find(details_.begin(), details_.end(), heading.index()) != details_.end();
    }
    for (const RowDetail each : details_) {
        const Twips width = each == kLengthDetail ? kLengthColumn : kTextColumn + more;
        columns_.push_back({left, width - kGap});
        Label& heading = form_.lblDetail.at(each);
        corvane::place(heading, list.Left + left, kListHeadingTop, width - kGap, kHeadingHeight);
        left += width;
    }
    if (columns_.empty()) return;
    Label& names = form_.lblFileList[FileListControls::kPlayListHeading];
    names.SetSize(columns_.front().left - kGap, kHeadingHeight);
}

void EditorLayout::placeBottom() {
    const Twips top = form_.Height - kStatusHeight - kMargin - kFieldHeight;
    Twips left = kMargin;
    for (int i = 0; i < 3; ++i) {
        const auto at = static_cast<std::size_t>(i);
        corvane::place(form_.lblFileList[FileListControls::kMovieHeading + at], left, top - kHeadingHeight,
                       kChoiceWidth, kHeadingHeight);
        corvane::place(form_.cboFileList[FileListControls::kMovieZoom + at], left, top, kChoiceWidth, kFieldHeight);
        left += kChoiceWidth + kGap;
    }
    corvane::place(form_.lblSort, left, top - kHeadingHeight, kChoiceWidth, kHeadingHeight);
    corvane::place(form_.cboSort, left, top, kChoiceWidth, kFieldHeight);
    const Twips right = form_.Width - kMargin - kCommandWidth;
    corvane::place(form_.cmdFileList[FileListControls::kOk], right - kCommandWidth - kGap, top, kCommandWidth,
                   kFieldHeight);
    corvane::place(form_.cmdFileList[FileListControls::kCancel], right, top, kCommandWidth, kFieldHeight);
}

void EditorLayout::placeStatus() {
    const Twips top = form_.Height - kMargin - kFieldHeight;
    const Twips last = form_.Width - kMargin - kCommandWidth;
    const Twips next = last - kGap - kNextWidth;
    const Twips field = next - kGap - kFindWidth;
    const Twips stop = field - kMargin - kNextWidth;
    corvane::place(form_.lblStatus, kMargin, top, stop - kMargin - kMargin, kFieldHeight);
    corvane::place(form_.cmdEdit[FileListControls::kStopReading], stop, top, kNextWidth, kFieldHeight);
    corvane::place(form_.txtFind, field, top, kFindWidth, kFieldHeight);
    corvane::place(form_.cmdEdit[FileListControls::kFindNext], next, top, kNextWidth, kFieldHeight);
    corvane::place(form_.cmdEdit[FileListControls::kExport], last, top, kCommandWidth, kFieldHeight);
}

}  // namespace corvane
