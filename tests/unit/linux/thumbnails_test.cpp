// SPDX-License-Identifier: GPL-3.0-or-later
// Small pictures for lists: what they cost, and what none is made of.
#include "linux/pictures/thumbnails.h"

#include <sys/stat.h>

#include <QImage>
#include <chrono>
#include <filesystem>

#include "unit/linux/memory_peak.h"
#include "unit/linux/pictures_rig.h"

namespace corvane {
namespace {

struct ThumbnailsTest : test::PicturesRig {
    void write(const std::string& name, int width, int height, const char* format) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(QColor(200, 40, 40));
        ASSERT_TRUE(image.save(QString::fromStdString(folder.in(name)), format));
    }
    Picture small(const std::string& name) {
        const PictureWorker::GiveUp never{false};
        return decodeThumbnail(folder.in(name), never).picture;
    }
    QSize sizeOf(const std::string& name) {
        const Picture picture = small(name);
        return {picture.width(), picture.height()};
    }
};

/// EDIT-94: A small picture keeps its shape within 96 pixels and is never enlarged
TEST_F(ThumbnailsTest, KeepTheirShapeAndAreNeverEnlarged) {
    write("a.jpg", 1200, 900, "JPG");
    write("b.png", 5000, 3, "PNG");
    write("c.bmp", 10, 40, "BMP");
    EXPECT_EQ(sizeOf("a.jpg"), QSize(96, 72));
    EXPECT_EQ(sizeOf("b.png"), QSize(96, 1));
    EXPECT_EQ(sizeOf("c.bmp"), QSize(10, 40));
    const std::uint32_t colour = small("a.jpg").data()->pixel(48, 36);
    EXPECT_NEAR(static_cast<int>(colour >> 16U), 200, 4);
    EXPECT_EQ(QtPicture::heldPixels(), 0) << "nothing is kept of the whole";
}

/// EDIT-95: What is no picture, or costs more than a small one may, has none: files of more than 64 MB, kinds that
///     only a decoder of the system reads
TEST_F(ThumbnailsTest, WhatCostsTooMuchHasNone) {
    folder.write("noise.png", "\x89PNG\r\n\x1a\n" + std::string(5000, '\7'));
    folder.write("empty.jpg", "");
    std::filesystem::create_directory(folder.in("folder.bmp"));
    ASSERT_EQ(mkfifo(folder.in("pipe.gif").c_str(), 0600), 0);
    folder.write("drawing.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
    write("large.bmp", 40, 40, "BMP");
    std::filesystem::resize_file(folder.in("large.bmp"), (64U << 20U) + 1);
    for (const char* name : {"noise.png", "empty.jpg", "folder.bmp", "pipe.gif", "drawing.svg", "large.bmp", "gone"}) {
        EXPECT_TRUE(small(name).empty()) << name;
    }
    std::filesystem::resize_file(folder.in("large.bmp"), 64U << 20U);
    EXPECT_FALSE(small("large.bmp").empty()) << "the last byte that counts";
}

/// EDIT-95
TEST_F(ThumbnailsTest, ALargePictureTakesLittleMemory) {
    write("a.png", 6000, 6000, "PNG");
    write("b.bmp", 4000, 4000, "BMP");
    const test::MemoryPeak peak;
    EXPECT_EQ(sizeOf("a.png"), QSize(96, 96));
    EXPECT_EQ(sizeOf("b.bmp"), QSize(96, 96));
    EXPECT_LT(peak.megabytes(), 48);
}

/// EDIT-96: One is read in a worker, told in an event of its own, and not told once it was given up
TEST_F(ThumbnailsTest, AreReadInAWorker) {
    write("a.jpg", 1200, 900, "JPG");
    write("b.jpg", 900, 1200, "JPG");
    Thumbnails thumbnails(loop);
    std::vector<int> told;
    const auto take = [&told](const Picture& picture) { told.push_back(picture.width()); };
    thumbnails.read(folder.in("a.jpg"), take);
    thumbnails.giveUp();
    thumbnails.read(folder.in("b.jpg"), take);
    EXPECT_TRUE(told.empty());
    ASSERT_TRUE(test::waitUntil([&] { return !told.empty(); }, 30'000));
    EXPECT_EQ(told, std::vector<int>{72});
    write("tiny.bmp", 10, 10, "BMP");
    thumbnails.read(folder.in("tiny.bmp"), take);
    thumbnails.giveUp();
    Thumbnails others(loop);
    bool isRead = false;
    others.read(folder.in("b.jpg"), [&isRead](const Picture&) { isRead = true; });
    ASSERT_TRUE(test::waitUntil([&] { return isRead; }, 30'000));
    EXPECT_EQ(told.size(), 1U) << "a smaller one, begun before, was given up";
    thumbnails.read(folder.in("gone.jpg"), take);
    ASSERT_TRUE(test::waitUntil([&] { return told.size() == 2; }, 30'000));
    EXPECT_EQ(told.back(), 0);
}

/// EDIT-96
TEST_F(ThumbnailsTest, ADriveThatHangsHoldsUpNoOther) {
    std::filesystem::create_directory(folder.in("drive"));
    folder.write("drive/a.jpg", "no picture");
    write("fine.bmp", 20, 10, "BMP");
    setenv("CORVANE_STALL_FOLDER", folder.in("drive").c_str(), 1);
    setenv("CORVANE_STALL_SWITCH", folder.in("switch").c_str(), 1);
    folder.write("switch", "all");
    {
        Thumbnails thumbnails(loop);
        int width = -1;
        const auto begin = std::chrono::steady_clock::now();
        const auto taken = [begin] { return std::chrono::steady_clock::now() - begin; };
        thumbnails.read(folder.in("drive/a.jpg"), [&width](const Picture&) { width = 0; });
        while (taken() < std::chrono::milliseconds(300)) QCoreApplication::processEvents();  // it waits for the drive
        EXPECT_EQ(width, -1) << "the drive answers";
        thumbnails.giveUp();
        thumbnails.read(folder.in("fine.bmp"), [&width](const Picture& picture) { width = picture.width(); });
        EXPECT_TRUE(test::waitUntil([&width] { return width == 20; }, 1'000));
    }
    std::filesystem::remove(folder.in("switch"));
    EXPECT_TRUE(test::waitUntil([this] { return !small("fine.bmp").empty(); }));
    unsetenv("CORVANE_STALL_FOLDER");
    unsetenv("CORVANE_STALL_SWITCH");
}

}  // namespace
}  // namespace corvane
