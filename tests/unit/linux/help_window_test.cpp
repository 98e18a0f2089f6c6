// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/help_window.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

const QString kManual = QStringLiteral(CORVANE_SOURCE_DIR "/docs/manual/");

QString textOf(const QString& page) {
    QFile file(kManual + page);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList captures(const QString& text, const QString& pattern) {
    QStringList found;
    auto each = QRegularExpression(pattern).globalMatch(text);
    while (each.hasNext()) found.append(each.next().captured(1));
    return found;
}

struct Help : ::testing::Test {
    Help() {
        test::offscreenApplication();
        window = new HelpWindow(kManual + "index.html");
        window->show();
    }
    ~Help() override { delete window; }

    QTextBrowser& text() const { return *window->findChild<QTextBrowser*>(); }
    QLineEdit& field() const { return *window->findChild<QLineEdit*>(); }
    QString page() const { return text().source().fileName(); }
    QString selected() const { return text().textCursor().selectedText(); }
    int place() const { return text().textCursor().selectionStart(); }

    static void press(QWidget& widget, int key, const QString& letter = {},
                      Qt::KeyboardModifiers held = Qt::NoModifier) {
        QKeyEvent event(QEvent::KeyPress, key, held, letter);
        QCoreApplication::sendEvent(&widget, &event);
    }
    void type(const QString& word) const {
        for (const QChar letter : word) press(field(), letter.toUpper().unicode(), letter);
    }

    QPointer<HelpWindow> window;
};

/// KEY-24
TEST_F(Help, ShowsTheFirstPageAndListsTheHeadingsOfAll) {
    EXPECT_EQ(page(), "index.html");
    const auto* const contents = window->findChild<QTreeWidget*>();
    ASSERT_EQ(contents->topLevelItemCount(), 2);
    EXPECT_EQ(contents->topLevelItem(0)->text(0), "Manual");
    EXPECT_EQ(contents->topLevelItem(1)->text(0), "Making skins");
    EXPECT_EQ(contents->topLevelItem(0)->childCount(), textOf("index.html").count("<h2>"));
    EXPECT_EQ(contents->topLevelItem(0)->child(0)->text(0), "First steps");
}

TEST_F(Help, AHeadingOfTheContentsIsGoneTo) {
    auto* const contents = window->findChild<QTreeWidget*>();
    const QList<QTreeWidgetItem*> found = contents->findItems("The records", Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1);
    QTreeWidgetItem* const records = found.front();
    ASSERT_EQ(records->parent(), contents->topLevelItem(1));
    emit contents->itemClicked(records, 0);
    EXPECT_EQ(page(), "skins.html");
    EXPECT_EQ(text().textCursor().block().text(), "The records");
}

TEST_F(Help, SearchesAsOneTypesAndRoundThroughAllPages) {
    type("soundfont");
    EXPECT_EQ(selected().toLower(), "soundfont");
    const int first = place();
    EXPECT_TRUE(window->search(false));
    EXPECT_GT(place(), first);
    EXPECT_TRUE(window->search(true));
    EXPECT_EQ(place(), first);

    field().setText("spreadsheet");
    EXPECT_EQ(page(), "skins.html");
    EXPECT_EQ(selected(), "spreadsheet");
    field().setText("first steps");
    EXPECT_EQ(page(), "index.html") << "round to the first page";
    EXPECT_FALSE(text().extraSelections().empty());
}

TEST_F(Help, SaysWhenThereIsNothing) {
    type("gramophone");
    EXPECT_EQ(page(), "index.html");
    EXPECT_EQ(window->findChild<QLabel*>()->text(), "Not found");
    field().clear();
    EXPECT_EQ(window->findChild<QLabel*>()->text(), "");
    EXPECT_TRUE(text().extraSelections().empty());
}

TEST_F(Help, KeysGoToTheFieldAndFromPlaceToPlace) {
    press(text(), Qt::Key_F, "", Qt::ControlModifier);
    EXPECT_EQ(window->focusWidget(), &field());
    type("slider");
    const int first = place();
    press(text(), Qt::Key_F3);
    const int second = place();
    EXPECT_GT(second, first);
    press(field(), Qt::Key_Return);
    EXPECT_GT(place(), second);
    press(field(), Qt::Key_F3, "", Qt::ShiftModifier);
    EXPECT_EQ(place(), second);
}

TEST_F(Help, EscapeClosesItForGood) {
    int closed = 0;
    window->closed = [&] { ++closed; };
    press(text(), Qt::Key_Escape);
    EXPECT_EQ(closed, 1) << "its owner does away with it";
    EXPECT_FALSE(window->isVisible());
}

TEST(HelpWithout, AManualSaysSo) {
    test::offscreenApplication();
    for (const char* missing : {"", "/nowhere/index.html"}) {
        auto* const window = new HelpWindow(missing);
        EXPECT_EQ(window->findChild<QTextBrowser*>()->toPlainText(), "The manual is not installed.");
        EXPECT_FALSE(window->search(false));
        delete window;
    }
}

TEST(Manual, EveryLinkAndPictureIsThere) {
    for (const QString& page : {QStringLiteral("index.html"), QStringLiteral("skins.html")}) {
        const QString text = textOf(page);
        for (const QString& link : captures(text, "href=\"([^\"]+)\"")) {
            const QString file = link.section('#', 0, 0).isEmpty() ? page : link.section('#', 0, 0);
            ASSERT_TRUE(QFile::exists(kManual + file)) << link.toStdString();
            const QString place = link.section('#', 1);
            EXPECT_TRUE(place.isEmpty() || textOf(file).contains("name=\"" + place + "\"")) << link.toStdString();
        }
        for (const QString& picture : captures(text, "src=\"([^\"]+)\"")) {
            const QImage image(kManual + picture);
            EXPECT_FALSE(image.isNull()) << picture.toStdString();
            EXPECT_LE(image.width(), 720) << picture.toStdString() << " is wider than the window";
        }
    }
}

TEST(Manual, NamesEverySettingKindAndRecord) {
    const QString manual = textOf("index.html");
    for (const char* name : {"WINDOWPOS",
                             "DELAYTIME",
                             "AUXTYPE",
                             "AUTOPLAY",
                             "QUICK",
                             "PATTERN",
                             "MOVIEZOOM",
                             "IMAGEZOOM",
                             "INTERVAL",
                             "FILENUM",
                             "PAGENUM",
                             "IMAGEHIDE",
                             "BITMAPFILE",
                             "TEXTFILE",
                             "POWER_Click",
                             "MIN_Click",
                             "REPEAT_Click",
                             "SHUFFLE_Click",
                             "PLAY_Click",
                             "PAUSE_Click",
                             "STOP_Click",
                             "PREV_Click",
                             "NEXT_Click",
                             "VOLUME_Up",
                             "VOLUME_Down",
                             "CDA",
                             "BMP",
                             "JPEG",
                             "JPG",
                             "GIF",
                             "AVI",
                             "MOV",
                             "QT",
                             "MID",
                             "RMI",
                             "MPG",
                             "MPV",
                             "MP2",
                             "WAV",
                             "MP3",
                             "M1V",
                             "MPEG",
                             "RA",
                             "RM",
                             "RAM",
                             "RMM",
                             "SND",
                             "AU",
                             "AIF",
                             "AIFC",
                             "AIFF",
                             "CORVANE_FOLDER",
                             "CORVANE_CDROM",
                             "CORVANE_SOUNDFONT",
                             "CORVANE_SCALE"}) {
        const QRegularExpression word("\\b" + QString(name) + "\\b");
        EXPECT_TRUE(manual.contains(word)) << name;
    }
    const QString cells = captures(textOf("skins.html"), "<tr[^>]*><td><b>([0-9, ]+)</b>").join(", ");
    for (int record = 0; record <= 40; ++record) {
        EXPECT_EQ(cells.split(", ").count(QString::number(record)), 1) << record;
    }
}

}  // namespace
}  // namespace corvane
