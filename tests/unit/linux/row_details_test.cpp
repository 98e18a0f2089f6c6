// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's list in real widgets: small pictures in front of the rows, columns behind their names.
#include <QAccessible>
#include <QImage>
#include <QScrollBar>

#include "linux/windowing/shown_text.h"
#include "unit/linux/native_rig.h"

namespace corvane::test {
namespace {

class RowDetailWidgets : public NativeRig {
protected:
    /// The rows' pictures lie in a folder of the machine: they are read by the desktop itself.
    void fill(int pictures, int sounds) {
        PlayListBox& list = editor().lstFileList[0];
        std::vector<std::string> names, paths;
        for (int i = 0; i < pictures + sounds; ++i) {
            names.push_back(std::to_string(i) + (i < pictures ? ".bmp" : ".wav"));
            paths.push_back(folder.in(names.back()));
        }
        loop.enter([&] {
            list.setItems(names);
            editor().lstFileList[1].setItems(paths);
            editor().Resize.raise();
        });
        settle();
    }
    FileListControls& editor() { return *player.forms.find<FileListControls>(); }
    QAbstractItemView& list() { return widget<QAbstractItemView>(editor().lstFileList[0]); }
    int rowHeight() { return list().sizeHintForRow(0); }
    QColor colourAt(QPoint at) { return list().viewport()->grab().toImage().pixelColor(at); }

    TemporaryFolder folder;
};

/// EDIT-97: Rows are as high as ever in a list without pictures, and all alike in one with some
TEST_F(RowDetailWidgets, RowsGrowForPicturesAlone) {
    openEditor();
    fill(0, 3);
    const int plain = rowHeight();
    EXPECT_EQ(plain, list().fontMetrics().height() + 4);
    fill(1, 2);
    EXPECT_EQ(rowHeight(), list().fontMetrics().height() * 3 / 2 + 4);
    EXPECT_EQ(list().visualRect(list().model()->index(2, 0)).height(), rowHeight());
    fill(0, 2);
    EXPECT_EQ(rowHeight(), plain);
}

/// EDIT-98: Of a long list the rows that are seen alone are asked about, and those that are scrolled to
TEST_F(RowDetailWidgets, AsksForTheRowsThatAreSeen) {
    openEditor();
    std::vector<std::pair<int, int>> seen;
    editor().lstFileList[0].rowsSeen = [&](int first, int last) { seen.emplace_back(first, last); };
    fill(0, 9'000);
    list().repaint();
    settle();
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back().first, 0);
    const int shown = seen.back().second;
    EXPECT_GE(shown, list().viewport()->height() / rowHeight() - 1);
    EXPECT_LE(shown, list().viewport()->height() / rowHeight() + 1);
    list().verticalScrollBar()->setValue(5'000 * rowHeight());
    list().repaint();
    settle();
    EXPECT_EQ(seen.back(), std::pair(5'000, 5'000 + shown));
}

/// EDIT-99: A small picture is seen in front of its row, also of a selected one, as it is
TEST_F(RowDetailWidgets, ThePictureIsSeenAsItIs) {
    QImage red(400, 300, QImage::Format_RGB32);
    red.fill(QColor(208, 32, 32));
    ASSERT_TRUE(red.save(QString::fromStdString(folder.in("0.bmp"))));
    openEditor();
    fill(1, 2);
    const QPoint at(12, rowHeight() / 2);
    EXPECT_TRUE(waitUntil([&] { return colourAt(at) == QColor(208, 32, 32); }, 30'000));
    clickRow(list(), 0);
    EXPECT_EQ(colourAt(at), QColor(208, 32, 32)) << "selected";
    EXPECT_NE(colourAt(at + QPoint(0, rowHeight())), QColor(208, 32, 32)) << "a sound";
}

/// EDIT-100: An assistive program hears what a row's columns show behind its name
TEST_F(RowDetailWidgets, ARowSaysItsColumns) {
    openEditor();
    fill(0, 2);
    PlayListBox& box = editor().lstFileList[0];
    box.detailOf = [](int, int column) { return column == 0 ? "Title" : "3:05"; };
    loop.enter([&] { box.show({{2'000, 900}, {3'000, 900}}, false); });
    settle();
    QAccessibleInterface* const tree = QAccessible::queryAccessibleInterface(&list());
    ASSERT_NE(tree, nullptr);
    ASSERT_GE(tree->childCount(), 2);
    EXPECT_EQ(tree->child(1)->text(QAccessible::Name), "1.wav, Title, 3:05");
}

}  // namespace
}  // namespace corvane::test
