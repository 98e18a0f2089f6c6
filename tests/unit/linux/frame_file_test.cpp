// SPDX-License-Identifier: GPL-3.0-or-later
// Where frames of movies are saved.
#include "linux/media/movies/frame_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "drives/pictures_folder.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

QImage picture() {
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(0xFF208040);
    return image;
}

/// MEDIA-80: A frame is saved over no other file
TEST(FrameFile, NoFileThatIsThereIsTouched) {
    const test::TemporaryFolder folder;
    const std::string first = folder.in("Film 1.png");
    const FrameFile one = writeFrame(picture(), folder.path(), "Film 1");
    ASSERT_EQ(one.reason, "");
    EXPECT_EQ(fs::path(one.path).lexically_normal(), fs::path(first).lexically_normal());
    EXPECT_EQ(QImage(QString::fromStdString(one.path)).pixel(1, 1), 0xFF208040);
    std::ofstream(first) << "mine";
    fs::create_symlink(folder.in("elsewhere"), folder.in("Film 1 (2).png"));
    const FrameFile other = writeFrame(picture(), folder.path(), "Film 1");
    EXPECT_TRUE(other.path.ends_with("/Film 1 (3).png")) << other.path << other.reason;
    EXPECT_EQ(fs::file_size(first), 4U);
    EXPECT_FALSE(fs::exists(folder.in("elsewhere"))) << "a link is not followed";
}

/// MEDIA-80
TEST(FrameFile, WhatCannotBeWrittenIsToldAndGoesToTheProgramsFolder) {
    const test::TemporaryFolder folder;
    const FrameFile nowhere = writeFrame(picture(), folder.in("gone"), "Film");
    EXPECT_EQ(nowhere.path, "");
    EXPECT_NE(nowhere.reason, "");
    EXPECT_EQ(writeFrame(QImage(), folder.path(), "Film").path, "");
    ASSERT_EQ(setenv("HOME", folder.in("nohome").c_str(), 1), 0);
    ASSERT_EQ(setenv("XDG_CONFIG_HOME", folder.in("nohome").c_str(), 1), 0);
    fs::create_directory(folder.in("own"));
    EXPECT_TRUE(saveFrame(picture(), folder.in("own"), "Film").path.ends_with("/own/Film.png"));
    EXPECT_EQ(saveFrame(picture(), "", "Film").reason, "There is no folder for pictures");
    fs::create_directories(folder.in("nohome/Pictures"));
    EXPECT_TRUE(saveFrame(picture(), folder.in("own"), "Film").path.ends_with("/nohome/Pictures/Film.png"));
}

class PicturesFolder : public testing::Test {
protected:
    std::string found() {
        return picturesFolder([this](const char* name) { return variables_[name]; });
    }
    void record(const std::string& text) {
        fs::create_directories(home_ + "/.config");
        std::ofstream(home_ + "/.config/user-dirs.dirs") << text;
    }
    test::TemporaryFolder folder_;
    std::string home_ = fs::canonical(folder_.path()).string();
    std::map<std::string, std::string> variables_{{"HOME", home_}};
};

/// MEDIA-78: Frames go where the desktop has recorded that the user keeps pictures, else to Pictures in the home
TEST_F(PicturesFolder, IsTheRecordedOneElseThatOfTheHome) {
    EXPECT_EQ(found(), "") << "there is none";
    fs::create_directory(home_ + "/Pictures");
    EXPECT_EQ(found(), home_ + "/Pictures");
    fs::create_directory(home_ + "/Bilder \"x\"");
    record("# told by a program\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\nXDG_PICTURES_DIR=\"$HOME/Bilder \\\"x\\\"\"\n");
    EXPECT_EQ(found(), home_ + "/Bilder \"x\"");
    fs::create_directory(home_ + "/other");
    variables_["XDG_CONFIG_HOME"] = home_ + "/other";
    EXPECT_EQ(found(), home_ + "/Pictures") << "no record there";
    EXPECT_EQ(recordedPictures("XDG_PICTURES_DIR=\"/data/p\"", "/h"), "/data/p");
    EXPECT_EQ(recordedPictures("XDG_PICTURES_DIR=\"p\"\nXDG_PICTURES_DIR=\"$HOMEp\"", "/h"), "");
}

/// MEDIA-78
TEST_F(PicturesFolder, IsNeverTheHomeOrAFolderAroundIt) {
    for (const char* const place : {"$HOME", "$HOME/", "$HOME/.", "$HOME/..", "/", "$HOME/link"}) {
        fs::remove(home_ + "/link");
        fs::create_directory_symlink(home_, home_ + "/link");
        record("XDG_PICTURES_DIR=\"" + std::string(place) + "\"\n");
        EXPECT_EQ(found(), "") << place;
    }
}

}  // namespace
}  // namespace corvane
