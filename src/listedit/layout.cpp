// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/layout.h"

#include <algorithm>

#include "listedit/frmFileList.h"

namespace corvane {

namespace {

constexpr Twips pixels(int count) { return static_cast<Twips>(count) * kTwipsPerPixel; }

constexpr Twips kWidth = pixels(860), kHeight = pixels(520);
constexpr Twips kMinWidth = pixels(760), kMinHeight = pixels(380);
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
}

Twips EditorLayout::filesRight() const {
    const Twips more = (form_.Width - kWidth) / 2;
    return kWidth - kMargin - kPlayListWidth - kMargin - kCommandWidth - kMargin + more;
}

namespace {
/// Where the lists end and the bottom row begins.
Twips listBottom(const Form& form) { return form.Height - kMargin - kFieldHeight - kHeadingHeight - pixels(10); }
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
    corvane::place(form_.txtListName, left, nameTop, width - kCommandWidth - kGap, kFieldHeight);
    corvane::place(buttons[FileListControls::kSave], left + width - kCommandWidth, nameTop, kCommandWidth,
                   kFieldHeight);
}

void EditorLayout::placeBottom() {
    const Twips top = form_.Height - kMargin - kFieldHeight;
    Twips left = kMargin;
    for (int i = 0; i < 3; ++i) {
        const auto at = static_cast<std::size_t>(i);
        corvane::place(form_.lblFileList[FileListControls::kMovieHeading + at], left, top - kHeadingHeight,
                       kChoiceWidth, kHeadingHeight);
        corvane::place(form_.cboFileList[FileListControls::kMovieZoom + at], left, top, kChoiceWidth, kFieldHeight);
        left += kChoiceWidth + kGap;
    }
    const Twips right = form_.Width - kMargin - kCommandWidth;
    corvane::place(form_.cmdFileList[FileListControls::kOk], right - kCommandWidth - kGap, top, kCommandWidth,
                   kFieldHeight);
    corvane::place(form_.cmdFileList[FileListControls::kCancel], right, top, kCommandWidth, kFieldHeight);
}

}  // namespace corvane
