// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs in widgets: both ways between a widget and its control, keyboard, mouse, sizes.
#include <QCheckBox>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyle>
#include <set>

#include "unit/linux/native_rig.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

using Editor = FileListControls;
using Custom = CustomControls;
using Rows = std::vector<int>;
using Texts = std::vector<std::string>;

class NativeDialogs : public test::NativeRig {
protected:
    QAbstractItemView& view(const Control& control) { return widget<QAbstractItemView>(control); }
    QPushButton& button(const Control& control) { return widget<QPushButton>(control); }
};

/// EDIT-01
TEST_F(NativeDialogs, EachButtonShowsItsCaptionAndFollowsIt) {
    Editor& form = openEditor();
    EXPECT_EQ(button(form.cmdFileList[Editor::kAdd]).text().remove('&'), "Add");
    form.cmdFileList[Editor::kList].Caption = "File 7";
    EXPECT_EQ(button(form.cmdFileList[Editor::kList]).text().remove('&'), "File 7");
    EXPECT_FALSE(button(form.cmdFileList[Editor::kUnused]).isVisible());
    EXPECT_FALSE(view(form.lstFileList[1]).isVisible());
    EXPECT_EQ(windowOf(form).windowTitle(), "Corvane - Play List");
}

/// EDIT-104: Shift and Ctrl select several files, with Shift all between two
TEST_F(NativeDialogs, ShiftAndControlSelectSeveralFilesAndAddTakesThem) {
    Editor& form = openEditor();
    QAbstractItemView& files = view(form.fleFileList);
    clickRow(files, 0);
    clickRow(files, 2, Qt::ShiftModifier);
    EXPECT_EQ(form.fleFileList.selectedIndices(), (Rows{0, 1, 2}));
    clickRow(files, 1, Qt::ControlModifier);
    EXPECT_EQ(form.fleFileList.selectedIndices(), (Rows{0, 2}));
    button(form.cmdFileList[Editor::kAdd]).click();
    settle();
    EXPECT_EQ(form.lstFileList[0].items(), (Texts{"apple.wav", "blue.mp3"}));
    EXPECT_EQ(view(form.lstFileList[0]).model()->rowCount(), 2);
    EXPECT_EQ(selectedRows(files), Rows{}) << "what was added is not selected any more";
}

/// EDIT-29
TEST_F(NativeDialogs, TheSameFileCanBeAddedAgainByAnotherClick) {
    Editor& form = openEditor();
    for (int i = 0; i < 2; ++i) {
        clickRow(view(form.fleFileList), 1);
        button(form.cmdFileList[Editor::kAdd]).click();
        settle();
    }
    EXPECT_EQ(form.lstFileList[0].items(), (Texts{"banana.mid", "banana.mid"}));
}

TEST_F(NativeDialogs, TheKeyboardAloneSelectsAddsAndTypesAhead) {
    Editor& form = openEditor();
    QAbstractItemView& files = view(form.fleFileList);
    files.setFocus();
    type(files, "bl");
    EXPECT_EQ(form.fleFileList.selectedIndices(), Rows{2});
    key(files, Qt::Key_Down, {}, Qt::ShiftModifier);
    EXPECT_EQ(form.fleFileList.selectedIndices(), (Rows{2, 3}));
    key(button(form.cmdFileList[Editor::kAdd]), Qt::Key_Space, " ");
    EXPECT_EQ(form.lstFileList[0].count(), 0) << "a button's command runs inside the button's own handler";
    settle();
    EXPECT_EQ(form.lstFileList[0].items(), (Texts{"blue.mp3", "cherry.gif"}));
}

/// EDIT-31
TEST_F(NativeDialogs, ADoubleClickAddsAndRemoves) {
    Editor& form = openEditor();
    doubleClickRow(view(form.fleFileList), 1);
    EXPECT_EQ(form.lstFileList[1].items(), Texts{"/home/ann/Music/banana.mid"});
    doubleClickRow(view(form.lstFileList[0]), 0);
    EXPECT_EQ(form.lstFileList[0].count(), 0);
}

TEST_F(NativeDialogs, ADeletedEntryLeavesTheKeyboardWhereItWas) {
    Editor& form = openEditor();
    button(form.cmdFileList[Editor::kAddAll]).click();
    settle();
    QAbstractItemView& list = view(form.lstFileList[0]);
    clickRow(list, 2);
    button(form.cmdFileList[Editor::kDelete]).click();
    settle();
    EXPECT_EQ(form.lstFileList[0].count(), 3);
    EXPECT_EQ(list.currentIndex().row(), 2);
    EXPECT_EQ(form.lstFileList[0].ListIndex, -1);
}

/// EDIT-55
TEST_F(NativeDialogs, FoldersAreEnteredByDoubleClickAndByEnter) {
    Editor& form = openEditor();
    QAbstractItemView& folders = view(form.dirFileList);
    doubleClickRow(folders, 0);
    EXPECT_EQ(form.dirFileList.Path.get(), "/home/ann");
    EXPECT_EQ(folders.model()->index(1, 0).data().toString(), "Music");
    folders.setCurrentIndex(folders.model()->index(1, 0));
    key(folders, Qt::Key_Return);
    settle();
    EXPECT_EQ(form.dirFileList.Path.get(), "/home/ann/Music");
    EXPECT_NE(player.forms.find<Editor>(), nullptr) << "Enter in the folders is not OK";
    EXPECT_EQ(selectedRows(folders), Rows{1});
}

/// EDIT-15
TEST_F(NativeDialogs, EnterIsOkAndEscapeIsCancel) {
    Editor& form = openEditor();
    button(form.cmdFileList[Editor::kAddAll]).click();
    key(windowOf(form), Qt::Key_Return);
    settle();
    EXPECT_EQ(player.forms.find<Editor>(), nullptr);
    EXPECT_EQ(player.gFileCount, 4);

    Editor& again = openEditor();
    again.lstFileList[0].addItem("more.wav");
    again.lstFileList[1].addItem("/more.wav");
    key(windowOf(again), Qt::Key_Escape);
    settle();
    EXPECT_EQ(player.forms.find<Editor>(), nullptr);
    EXPECT_EQ(player.gFileCount, 4);
}

/// EDIT-14
TEST_F(NativeDialogs, TheWindowManagersCloseAsksTheForm) {
    Editor& form = openEditor();
    EXPECT_FALSE(windowOf(form).close());
    EXPECT_NE(player.forms.find<Editor>(), nullptr) << "not from inside the call";
    settle();
    EXPECT_EQ(player.forms.find<Editor>(), nullptr);
}

/// EDIT-48
TEST_F(NativeDialogs, TheStepperStepsAndWraps) {
    Editor& form = openEditor();
    auto& stepper = widget<QAbstractSlider>(form.hscrFileList);
    const QPoint less(3, stepper.height() / 2);
    const QPoint more(stepper.width() - 3, stepper.height() / 2);
    click(stepper, less);
    EXPECT_EQ(player.gListNumber, 9);
    EXPECT_EQ(stepper.value(), 9);
    click(stepper, more);
    EXPECT_EQ(player.gListNumber, 0);
    EXPECT_EQ(stepper.value(), 0);
    key(stepper, Qt::Key_Right);
    EXPECT_EQ(player.gListNumber, 1);
    EXPECT_EQ(form.cmdFileList[Editor::kList].Caption.get(), "File 2");
}

TEST_F(NativeDialogs, AChoiceIsTakenAndFollowed) {
    Editor& form = openEditor();
    auto& zoom = widget<QComboBox>(form.cboFileList[Editor::kMovieZoom]);
    EXPECT_EQ(zoom.count(), 6);
    key(zoom, Qt::Key_Down);
    EXPECT_EQ(player.gMovieZoom, 1);
    form.cboFileList[Editor::kMovieZoom].ListIndex = 4;
    settle();
    EXPECT_EQ(zoom.currentText(), "1/2 CRT");
}

/// EDIT-02
TEST_F(NativeDialogs, AnIntervalCanBeTypedAndChosenAgain) {
    Editor& form = openEditor();
    ComboBox& interval = form.cboFileList[Editor::kInterval];
    auto& box = widget<QComboBox>(interval);
    EXPECT_EQ(box.currentText(), "0");
    emit box.activated(2);
    EXPECT_EQ(player.gInterval, 5);
    box.lineEdit()->selectAll();
    type(*box.lineEdit(), "27");
    EXPECT_EQ(interval.Text.get(), "27");
    EXPECT_EQ(player.gInterval, 5);
    EXPECT_EQ(box.lineEdit()->text(), "27") << "a typed number is not completed";
    player.gInterval = 1;
    emit box.activated(2);
    settle();
    EXPECT_EQ(player.gInterval, 5);
    EXPECT_EQ(interval.Text.get(), "5");
    EXPECT_EQ(box.currentText(), "5");
}

/// EDIT-53
TEST_F(NativeDialogs, ADriveIsChosen) {
    Editor& form = openEditor();
    emit widget<QComboBox>(form.drvFileList).activated(0);
    settle();
    EXPECT_EQ(form.dirFileList.Path.get(), "/");
    EXPECT_EQ(view(form.dirFileList).model()->rowCount(), form.dirFileList.count());
}

TEST_F(NativeDialogs, NamesThatAreNotUtf8AreShownAndKeptAsTheyAre) {
    machine.files.add("/home/ann/Music/caf\xE9.wav");
    machine.files.add("/app/FILE00.INI", "[FILELIST]\r\nLISTNAME=\xE9t\xE9\r\n");
    Editor& form = openEditor();
    EXPECT_EQ(view(form.fleFileList).model()->index(3, 0).data().toString(), QStringLiteral("café.wav"));
    EXPECT_EQ(widget<QLineEdit>(form.txtListName).text(), QStringLiteral("été"));
    doubleClickRow(view(form.fleFileList), 3);
    EXPECT_EQ(form.lstFileList[1].items(), Texts{"/home/ann/Music/caf\xE9.wav"});
    EXPECT_EQ(form.txtListName.Text.get(), "\xE9t\xE9") << "not touched by being shown";
    auto& name = widget<QLineEdit>(form.txtListName);
    name.selectAll();
    type(name, QStringLiteral("朝"));
    EXPECT_EQ(form.txtListName.Text.get(), "朝");
}

TEST_F(NativeDialogs, AFolderOfManyFilesCostsOnlyTheRowsThatAreSeen) {
    Editor& form = openEditor();
    Texts names;
    for (int i = 0; i < 20000; ++i) names.push_back("track " + std::to_string(i) + ".mp3");
    const test::Stopwatch clock;
    loop.enter([&] { form.fleFileList.setItems(names); });
    settle();
    QCoreApplication::processEvents();
    RecordProperty("milliseconds", static_cast<int>(clock.own().count()));
    EXPECT_LT(clock.own().count(), 1000) << "a twentieth of a second where nothing else runs";
    QAbstractItemView& files = view(form.fleFileList);
    ASSERT_EQ(files.model()->rowCount(), 20000);
    files.setFocus();
    key(files, Qt::Key_End);
    EXPECT_EQ(form.fleFileList.ListIndex, 19999);
    EXPECT_TRUE(files.viewport()->rect().intersects(files.visualRect(files.model()->index(19999, 0))));
    key(files, Qt::Key_A, {}, Qt::ControlModifier);
    EXPECT_EQ(form.fleFileList.selectedIndices().size(), 20000U);
}

/// EDIT-09
TEST_F(NativeDialogs, TheHorizontalRangeReachesTheEndOfTheLongestName) {
    Editor& form = openEditor();
    form.lstFileList[0].addItem(std::string(200, 'W'));
    form.lstFileList[1].addItem("/w.wav");
    doubleClickRow(view(form.fleFileList), 0);
    QAbstractItemView& list = view(form.lstFileList[0]);
    const int text = list.fontMetrics().horizontalAdvance(QString(200, 'W'));
    EXPECT_GE(list.horizontalScrollBar()->maximum() + list.viewport()->width(), text);
    button(form.cmdFileList[Editor::kClear]).click();
    settle();
    EXPECT_EQ(list.horizontalScrollBar()->maximum(), 0);
}

TEST_F(NativeDialogs, FilesDroppedOnThePlayListAreTaken) {
    Editor& form = openEditor();
    QWidget& list = *view(form.lstFileList[0]).viewport();
    QMimeData files;
    files.setData("text/uri-list", "file:///home/ann/Music/banana.mid\r\nfile:///home/ann/Music/apple.wav\r\n");
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&list, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&list, &drop);
    settle();
    EXPECT_EQ(form.lstFileList[0].items(), (Texts{"banana.mid", "apple.wav"}));

    QMimeData text;
    text.setText("file");
    QDragEnterEvent other(QPoint(5, 5), Qt::CopyAction, &text, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&list, &other);
    EXPECT_FALSE(other.isAccepted());
}

/// A drag of files that counts how often its source was asked for them.
class AskedMime : public QMimeData {
public:
    mutable int asked = 0;

protected:
    QStringList formats() const override { return {QStringLiteral("text/uri-list")}; }
    bool hasFormat(const QString& format) const override { return formats().contains(format); }
    QVariant retrieveData(const QString&, QMetaType) const override {
        ++asked;
        return QByteArray("file:///home/ann/Music/apple.wav\r\n");
    }
};

TEST_F(NativeDialogs, ADragOverThePlayListAsksItsSourceForNothingBeforeItIsDropped) {
    Editor& form = openEditor();
    QWidget& list = *view(form.lstFileList[0]).viewport();
    const AskedMime files;
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&list, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDragMoveEvent move(QPoint(6, 6), Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&list, &move);
    EXPECT_TRUE(move.isAccepted());
    EXPECT_EQ(files.asked, 0) << "a source that never answers would hold the program at each move";
    QDropEvent drop(QPoint(6, 6), Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&list, &drop);
    settle();
    EXPECT_EQ(form.lstFileList[0].items(), (Texts{"apple.wav"}));
}

/// EDIT-51
TEST_F(NativeDialogs, TheSplitterFollowsTheMouse) {
    Editor& form = openEditor();
    auto& handle = widget<QWidget>(form.imgFileList);
    const int before = view(form.fleFileList).x();
    mouse(handle, QEvent::MouseButtonPress, QPoint(2, 20));
    mouse(handle, QEvent::MouseMove, QPoint(-58, 20));
    mouse(handle, QEvent::MouseButtonRelease, QPoint(0, 20));
    settle();
    EXPECT_NEAR(view(form.fleFileList).x(), before - 66, 8);
    EXPECT_EQ(handle.cursor().shape(), Qt::SplitHCursor);
}

/// EDIT-16
TEST_F(NativeDialogs, TheWindowFollowsAPressOnAHeadingUntilTheRelease) {
    Editor& form = openEditor();
    auto& heading = widget<QLabel>(form.lblFileList[Editor::kFilesHeading]);
    const QPoint before = windowOf(form).pos();
    mouse(heading, QEvent::MouseButtonPress, QPoint(5, 5));
    mouse(heading, QEvent::MouseMove, QPoint(45, 25));
    EXPECT_EQ(windowOf(form).pos(), before + QPoint(40, 20));
    mouse(heading, QEvent::MouseButtonRelease, QPoint(5, 5));
    mouse(heading, QEvent::MouseMove, QPoint(90, 90));
    EXPECT_EQ(windowOf(form).pos(), before + QPoint(40, 20));
}

/// EDIT-61
TEST_F(NativeDialogs, ALargerWindowGivesItsSpaceToTheLists) {
    Editor& form = openEditor();
    const QSize window = windowOf(form).size();
    const QSize list = view(form.lstFileList[0]).size();
    windowOf(form).resize(window + QSize(200, 100));
    settle();
    EXPECT_NEAR(view(form.lstFileList[0]).width(), list.width() + 100, 2);
    EXPECT_NEAR(view(form.lstFileList[0]).height(), list.height() + 100, 2);
    EXPECT_EQ(windowOf(form).size(), window + QSize(200, 100));
    windowOf(form).resize(10, 10);
    settle();
    EXPECT_GT(windowOf(form).width(), 500);
}

/// COM-30: A dialog that would hang over an edge of the screen opens at that edge
TEST_F(NativeDialogs, AWindowThatWouldHangOverAnEdgeOpensAtThatEdge) {
    auto& form = player.forms.load<CustomControls>();
    form.Move(100'000, 100'000);
    loop.enter([&] { form.Show(); });
    settle();
    const QWidget& window = windowOf(form);
    const QRect room = window.screen()->availableGeometry();
    constexpr int kTitleBar = 40;  // room for the frame, which is not known before it is shown
    EXPECT_EQ(window.x() + window.width(), room.x() + room.width());
    EXPECT_EQ(window.y() + window.height(), room.y() + room.height() - kTitleBar);
}

/// COM-16
TEST_F(NativeDialogs, OptionsOfAGroupExcludeEachOtherAndOnlyThose) {
    Custom& form = openSettings();
    widget<QRadioButton>(form.optCustom[Custom::kSubWindow]).click();
    EXPECT_TRUE(form.optCustom[Custom::kSubWindow].Value);
    EXPECT_FALSE(form.optCustom[Custom::kNormalMode].Value);
    EXPECT_TRUE(form.optCustom[Custom::kHideTrue].Value);
    form.optCustom[Custom::kMainWindow].Value = true;
    EXPECT_TRUE(widget<QRadioButton>(form.optCustom[Custom::kMainWindow]).isChecked());
    EXPECT_FALSE(widget<QRadioButton>(form.optCustom[Custom::kSubWindow]).isChecked());
    widget<QCheckBox>(form.chkCustom[Custom::kAutoStart]).click();
    EXPECT_TRUE(form.chkCustom[Custom::kAutoStart].Value);
}

/// DIAL-16
TEST_F(NativeDialogs, TheDelayFieldDropsWhatIsNoDigitTypedOrPasted) {
    Custom& form = openSettings();
    TextBox& delay = form.txtCustom[Custom::kDelay];
    auto& edit = widget<QLineEdit>(delay);
    edit.selectAll();
    type(edit, "1a2-b");
    EXPECT_EQ(delay.Text.get(), "12");
    key(edit, Qt::Key_Backspace, "\b");
    EXPECT_EQ(delay.Text.get(), "1");
    QGuiApplication::clipboard()->setText("3x 4.");
    edit.paste();
    EXPECT_EQ(delay.Text.get(), "134");
    EXPECT_EQ(edit.text(), "134");
}

/// DIAL-13
TEST_F(NativeDialogs, AClickIntoAKeyFieldSelectsItsTextAndTypingReplacesIt) {
    Custom& form = openSettings();
    windowOf(form).activateWindow();
    auto& edit = widget<QLineEdit>(form.txtCustom[3]);
    edit.setFocus(Qt::MouseFocusReason);
    click(edit, QPoint(20, 8));
    QCoreApplication::processEvents();
    EXPECT_EQ(edit.selectedText(), "S");
    EXPECT_EQ(form.txtCustom[3].SelLength, 1);
    EXPECT_TRUE(form.imgCustom[3].Visible);
    EXPECT_TRUE(widget<QWidget>(form.imgCustom[3]).isVisible());
    type(edit, "q");
    EXPECT_EQ(form.txtCustom[3].Text.get(), "q");
}

/// DIAL-12
TEST_F(NativeDialogs, ALabelLeadsToItsField) {
    Custom& form = openSettings();
    windowOf(form).activateWindow();
    auto& label = widget<QLabel>(form.lblCustom[5]);
    EXPECT_EQ(label.buddy(), &widget<QLineEdit>(form.txtCustom[5]));
    click(label, QPoint(5, 5));
    EXPECT_EQ(windowOf(form).focusWidget(), &widget<QLineEdit>(form.txtCustom[5]));
}

/// EDIT-63
TEST_F(NativeDialogs, TabGoesFromFieldToFieldInTheirOrder) {
    Custom& form = openSettings();
    std::vector<const Control*> order;
    for (const Control* each : form.controls()) {
        if (each->TabIndex >= 0) order.push_back(each);
    }
    std::sort(order.begin(), order.end(), [](auto* a, auto* b) { return a->TabIndex < b->TabIndex; });
    for (std::size_t i = 0; i + 1 < order.size(); ++i) {
        QWidget* next = widget<QWidget>(*order[i]).nextInFocusChain();
        // Widgets inside a widget (an editable list's field) and those that Tab skips stand between.
        while (next->objectName() != widget<QWidget>(*order[i + 1]).objectName() &&
               next->focusPolicy() != Qt::TabFocus &&
               (next->focusPolicy() == Qt::NoFocus || widget<QWidget>(*order[i]).isAncestorOf(next))) {
            next = next->nextInFocusChain();
        }
        EXPECT_EQ(next->objectName(), widget<QWidget>(*order[i + 1]).objectName());
    }
}

TEST_F(NativeDialogs, AccessKeysAreUniqueAndAmpersandsAreShown) {
    for (Form* form : {static_cast<Form*>(&openEditor()), static_cast<Form*>(&openSettings())}) {
        std::set<QChar> letters;
        int marked = 0;
        const auto take = [&](const QString& text) {
            const auto at = text.indexOf('&');
            if (at < 0) return;
            ++marked;
            EXPECT_TRUE(letters.insert(text[at + 1].toUpper()).second) << text.toStdString();
        };
        for (const QAbstractButton* each : windowOf(*form).findChildren<QAbstractButton*>()) take(each->text());
        for (const QLabel* each : windowOf(*form).findChildren<QLabel*>()) take(each->text());
        EXPECT_GE(marked, 14);
    }
    Editor& form = *player.forms.find<Editor>();
    form.cmdFileList[Editor::kOk].Caption = "R&B";
    EXPECT_EQ(button(form.cmdFileList[Editor::kOk]).text(), "R&&B");
}

TEST_F(NativeDialogs, AccessKeysAreUnderlinedWhileAltIsHeld) {
    Custom& form = openSettings();
    auto& field = widget<QLineEdit>(form.txtCustom[0]);
    const auto underlined = [&] {
        const QStyle& style = *widget<QLabel>(form.lblCustom[0]).style();
        return style.styleHint(QStyle::SH_UnderlineShortcut) != 0;
    };
    EXPECT_FALSE(underlined());
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Alt, Qt::AltModifier);
    QCoreApplication::sendEvent(&field, &down);
    EXPECT_TRUE(underlined());
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Alt, {});
    QCoreApplication::sendEvent(&field, &up);
    EXPECT_FALSE(underlined());
}

/// DIAL-37
TEST_F(NativeDialogs, NoTextIsCutWithALargerSystemFont) {
    const QFont before = QApplication::font();
    for (const double points : {9.0, 13.5, 22.0}) {
        QFont larger = before;
        larger.setPointSizeF(points);
        QApplication::setFont(larger);
        for (Form* form : {static_cast<Form*>(&openEditor()), static_cast<Form*>(&openSettings())}) {
            for (const QWidget* each : windowOf(*form).findChildren<QWidget*>()) {
                if (!each->isVisible()) continue;
                QString text;
                if (const auto* push = qobject_cast<const QPushButton*>(each)) text = push->text();
                if (const auto* label = qobject_cast<const QLabel*>(each)) text = label->text();
                text.remove('&');
                EXPECT_GE(each->width(), each->fontMetrics().horizontalAdvance(text)) << text.toStdString() << points;
                const bool toggle = qobject_cast<const QRadioButton*>(each) || qobject_cast<const QCheckBox*>(each);
                EXPECT_GE(each->width(), toggle ? each->sizeHint().width() : 0) << points;
                const bool field = qobject_cast<const QLineEdit*>(each) || qobject_cast<const QComboBox*>(each);
                const bool inCombo = qobject_cast<const QComboBox*>(each->parentWidget()) != nullptr;
                if (toggle || (field && !inCombo)) {
                    EXPECT_GE(each->height(), each->sizeHint().height()) << each->objectName().toStdString() << points;
                }
            }
        }
        player.forms.clear();
        settle();
    }
    QApplication::setFont(before);
}

}  // namespace
}  // namespace corvane
