// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "linux/pictures/qt_pictures.h"
#include "linux/qt_loop.h"
#include "linux/qt_post.h"
#include "unit/linux/offscreen.h"

namespace corvane::test {

/// The desktop's pictures with their worker, and a folder for files.
struct PicturesRig : ::testing::Test {
    PicturesRig() : application(offscreenApplication()) {}
    ~PicturesRig() override { post.stop(); }

    /// What comes of a picture that is begun, at once or later.
    Pictures::Decoded begin(const std::string& name) {
        std::optional<Pictures::Decoded> told;
        if (auto now = pictures.begin(folder.in(name), [&told](Pictures::Decoded decoded) { told = decoded; }))
            return *now;
        EXPECT_TRUE(waitUntil([&] { return told.has_value(); }, 30'000)) << name;
        return told.value_or(Pictures::Decoded{});
    }
    void finishHints() {
        ASSERT_TRUE(waitUntil([this] { return pictures.isIdle(); }, 30'000));
    }

    QApplication& application;
    TemporaryFolder folder;
    QtLoop loop;
    QtPost post{loop};
    QtPictures pictures{post};
};

}  // namespace corvane::test
