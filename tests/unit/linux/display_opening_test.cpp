// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/display_opening.h"

#include <gtest/gtest.h>

#include <QLoggingCategory>
#include <QString>
#include <cstdlib>
#include <vector>

#include "unit/linux/fork_alone.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

Texts& heard() {
    static Texts texts;
    return texts;
}

/// What the tool kit says to whoever listens, instead of the error stream.
class Listener {
public:
    Listener() {
        heard().clear();
        before_ = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { heard().push_back(text.toStdString()); });
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { qInstallMessageHandler(before_); }

private:
    QtMessageHandler before_;
};

TEST(DisplayOpening, ItsLineNamesWhatWasTriedAndWhyItFailed) {
    EXPECT_EQ(whyNoDisplay("", "", "", "could not connect to display "),
              "There is no display: neither DISPLAY nor WAYLAND_DISPLAY is set.");
    EXPECT_EQ(whyNoDisplay(":7", "wayland-0", "", "no such server"),
              "The display cannot be opened (DISPLAY=:7): no such server");
    EXPECT_EQ(whyNoDisplay("", "wayland-0", "", "no plug-in"),
              "The display cannot be opened (WAYLAND_DISPLAY=wayland-0): no plug-in");
    EXPECT_EQ(whyNoDisplay(":7", "", "nonsense", ""), "The display cannot be opened (QT_QPA_PLATFORM=nonsense).");
    EXPECT_EQ(whyNoDisplay("", "", "xcb", "x"), "The display cannot be opened (QT_QPA_PLATFORM=xcb): x");
}

/// START-63: A start that finds no display to open ends with code 1 and one line that says which and why
TEST(DisplayOpening, WhatIsFatalToTheToolKitIsOneLineAndTheEnd) {
    test::leaveThreads();
    EXPECT_EXIT(
        {
            setenv("DISPLAY", ":7", 1);
            const DisplayOpening opening("");
            const QLoggingCategory other("qt.other");
            const QLoggingCategory displays("qt.qpa.xcb");
            qCWarning(other, "a remark on something else");
            qCWarning(displays, "first\nand its second line");
            qCWarning(displays, "second");
            qFatal("There are a lot of things to do\nabout this");
        },
        ::testing::ExitedWithCode(1),
        "^corvane: The display cannot be opened \\(DISPLAY=:7\\): first.and its second line\n$");
    EXPECT_EXIT(
        {
            const DisplayOpening opening("eglfs");
            qWarning("a remark on something else");
            qFatal("No card was found\nat all");
        },
        ::testing::ExitedWithCode(1),
        "^corvane: The display cannot be opened \\(QT_QPA_PLATFORM=eglfs\\): No card was found\n$");
}

TEST(DisplayOpening, WhatWasRemarkedIsToldWhenADisplayWasOpened) {
    const Listener listener;
    {
        const DisplayOpening opening("");
        qWarning("a font is missing");
        for (int i = 0; i < 100; ++i) qWarning("and another");
        EXPECT_EQ(heard(), Texts{});
    }
    ASSERT_EQ(heard().size(), 16U) << "it keeps no more than that";
    EXPECT_EQ(heard().front(), "a font is missing");
    qWarning("later");
    EXPECT_EQ(heard().back(), "later");
    { const DisplayOpening again(""); }
    EXPECT_EQ(heard().size(), 17U) << "nothing is told twice";
}

}  // namespace
}  // namespace corvane
