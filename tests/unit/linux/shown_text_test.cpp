// SPDX-License-Identifier: GPL-3.0-or-later
// Names that strangers made are shown as text, wherever they are shown.
#include "linux/windowing/shown_text.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>
#include <QToolTip>
#include <array>

#include "linux/windowing/qt_dialogs.h"
#include "unit/linux/native_rig.h"
#include "unit/linux/window_rig.h"

namespace corvane {
namespace {

/// A file that mark-up names. Says whether anybody has opened it since the last look.
class Lure {
public:
    Lure() : watch_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        folder_.write("lure.png", "not a picture");
        inotify_add_watch(watch_, folder_.in("lure.png").c_str(), IN_OPEN);
    }
    Lure(const Lure&) = delete;
    Lure& operator=(const Lure&) = delete;
    ~Lure() { close(watch_); }

    std::string name() const { return "<img src='" + folder_.in("lure.png") + "'>.wav"; }
    bool taken() {
        for (int i = 0; i < 10; ++i) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        std::array<char, 4096> events{};
        bool any = false;
        while (read(watch_, events.data(), events.size()) > 0) any = true;
        return any;
    }

private:
    test::TemporaryFolder folder_;
    int watch_;
};

TEST(ShownText, LineBreaksAreBlanksAndOtherControlCharactersAreSeen) {
    EXPECT_EQ(shownText("a\nb\r\tc"), "a b  c");
    EXPECT_EQ(shownText("a\u2028b\u2029c\u0085d"), "a b c d");
    EXPECT_EQ(shownText("\x1b[31m\x7f"), QStringLiteral("\uFFFD[31m\uFFFD"));
    EXPECT_EQ(shownText("あ é \U0001F600"), QStringLiteral("あ é \U0001F600"));
}

/// "song\u202E3pm.exe" would be read as "songexe.mp3".
TEST(ShownText, NoNameTurnsTheWritingAround) {
    for (const char* turn :
         {"\u202A", "\u202B", "\u202C", "\u202D", "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"}) {
        EXPECT_EQ(shownText(std::string("song") + turn + "3pm.exe"), QStringLiteral("song\uFFFD3pm.exe"));
    }
    EXPECT_EQ(shownText("שלום.mp3"), QStringLiteral("שלום.mp3")) << "names that are written that way stay as they are";
}

TEST(ShownText, ATitleKeepsTheSignThatTheToolKitTakesForItself) {
    test::offscreenApplication();
    QWidget window;
    window.setWindowTitle(shownTitle("a[*]b\nc"));
    EXPECT_EQ(window.windowTitle(), "a[*][*]b c");
}

TEST(ShownText, ALongNameNeverMakesABoxWiderOrHigherThanTheScreen) {
    test::offscreenApplication();
    const QFont font;
    const QFontMetrics metrics(font);
    const QString one = shownLines(std::string(4000, 'w') + ".mp3 Not found!!", font, 300);
    for (const QString& word : one.split(' ')) EXPECT_LE(metrics.horizontalAdvance(word), 300);
    EXPECT_TRUE(one.endsWith(" Not found!!")) << one.toStdString();
    std::string lines;
    for (int i = 0; i < 500; ++i) lines += "line\n";
    EXPECT_LE(shownLines(lines, font, 300).count('\n'), 12);
    EXPECT_EQ(shownLines("two\r\nlines", font, 300), "two\nlines");
}

TEST(ShownText, AMarkedTextIsNoMarkUpInATip) {
    EXPECT_EQ(plainTip({}), "");
    EXPECT_TRUE(plainTip("<b>a</b> & b").contains("&lt;b&gt;a&lt;/b&gt; &amp; b"));
    EXPECT_LT(plainTip(QString(100000, 'w')).size(), 1000);
}

/// The control of the tests below: mark-up that is obeyed opens the file.
TEST(MarkUpInNames, IsObeyedByATextThatMayBeRich) {
    test::offscreenApplication();
    Lure lure;
    QLabel rich(QString::fromStdString(lure.name()));
    rich.show();
    EXPECT_TRUE(lure.taken());
    QToolTip::showText({10, 10}, QString::fromStdString(lure.name()), &rich);
    EXPECT_TRUE(lure.taken());
    QToolTip::hideText();
    lure.taken();
}

TEST(MarkUpInNames, IsNotObeyedInABox) {
    test::offscreenApplication();
    Lure lure;
    QtLoop loop;
    DesktopContext context{loop, 1.0, {}};
    QtDialogs dialogs(context);
    QString shown;
    QTimer::singleShot(100, qApp, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = box->text();
        EXPECT_LE(box->width(), box->screen()->availableGeometry().width());
        box->accept();
    });
    dialogs.messageBox(lure.name() + " Not found!!", lure.name(), Buttons::Ok, Icon::Stop);
    EXPECT_FALSE(lure.taken());
    EXPECT_TRUE(shown.startsWith("<img src='"));
}

TEST(MarkUpInNames, IsNotObeyedInTheMenu) {
    test::offscreenApplication();
    Lure lure;
    QtLoop loop;
    DesktopContext context{loop, 1.0, {}};
    QtDialogs dialogs(context);
    Form form{"frmMenu", FormStyle::Hidden};
    MenuItem top{&form, "mnuTop"};
    MenuItem entry{&form, "mnuEntry"};
    top.children = {&entry};
    entry.Caption = lure.name() + " R&B";
    dialogs.popUp(top);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->actions()[0]->text().contains("R&&B")) << "an ampersand is no access key";
    EXPECT_FALSE(lure.taken());
    menu->close();
}

void restOn(QWidget& widget, QPoint at) {
    QHelpEvent rest(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QCoreApplication::sendEvent(&widget, &rest);
}

struct MarkUpOnThePanel : test::WindowRig {
    MarkUpOnThePanel() : WindowRig(FormStyle::Painted) {
        place(label, 10, 10, 100, 20);
        label.AccessibleName = "Tittle";
    }
    Label label{&form, "lblTried"};
    Lure lure;
};

TEST_F(MarkUpOnThePanel, IsNotObeyedInTextsTipsAndTitles) {
    label.Caption = lure.name();
    form.Caption = lure.name();
    attach();
    shown();
    restOn(widget(), {20, 20});
    EXPECT_TRUE(QToolTip::isVisible());
    EXPECT_FALSE(lure.taken());
    label.ToolTipText = lure.name();
    restOn(widget(), {20, 20});
    EXPECT_FALSE(lure.taken());
    EXPECT_EQ(widget().windowTitle().toStdString(), lure.name());
    QToolTip::hideText();
}

struct MarkUpInDialogs : test::NativeRig {
    Lure lure;
};

TEST_F(MarkUpInDialogs, IsNotObeyedInListsCombosFieldsAndTheirTips) {
    FileListControls& form = openEditor();
    form.lstFileList[0].addItem(lure.name());
    form.lstFileList[1].addItem("/m/" + lure.name());
    form.txtListName.Text = lure.name();
    form.txtListName.ToolTipText = lure.name();
    form.drvFileList.setItems({lure.name()});
    form.lblFileList[0].Caption = lure.name();
    form.cmdFileList[0].Caption = lure.name();
    settle();
    windowOf(form).grab();
    auto& list = widget<QAbstractItemView>(form.lstFileList[0]);
    restOn(*list.viewport(), rowOf(list, 0));
    EXPECT_TRUE(QToolTip::isVisible());
    EXPECT_EQ(QToolTip::text(), plainTip(shownText("/m/" + lure.name()))) << "the whole path";
    EXPECT_FALSE(lure.taken());
    restOn(widget<QWidget>(form.txtListName), {5, 5});
    EXPECT_FALSE(lure.taken());
    widget<QComboBox>(form.drvFileList).showPopup();
    EXPECT_FALSE(lure.taken());
    widget<QComboBox>(form.drvFileList).hidePopup();
    QToolTip::hideText();
}

}  // namespace
}  // namespace corvane
