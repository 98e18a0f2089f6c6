// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <memory>

#include "controls/movie_size.h"
#include "shell/drops.h"
#include "shell/painted_layout.h"
#include "types/file_patterns.h"

namespace corvane {
namespace {

/// A picture of a size and of one colour.
class Plain : public PictureData {
public:
    Plain(int width, int height) : width_(width), height_(height) {}
    int width() const override { return width_; }
    int height() const override { return height_; }
    std::uint32_t pixel(int /*x*/, int /*y*/) const override { return 0; }

private:
    int width_, height_;
};

Picture picture(int width, int height) { return Picture(std::make_shared<Plain>(width, height)); }

struct Composition : ::testing::Test {
    Composition() { form.SetSize(3000, 1500); }
    Form form{"frmTried", FormStyle::Painted};
};

/// COM-26: A painted form is composed of its visible controls from the lowest on, images at their pictures' size,
///     pressed buttons with their own picture
TEST_F(Composition, AnImageIsAsLargeAsItsPicture) {
    Image image(&form, "imgTried");
    image.Move(150, 300);
    image.SetSize(45, 60);
    EXPECT_EQ(imagePlace(image), (Rectangle{150, 300, 45, 60})) << "it has none yet";
    image.Picture = picture(7, 9);
    EXPECT_EQ(imagePlace(image), (Rectangle{150, 300, 105, 135}));
    EXPECT_EQ(paintPlace(form, image), imagePlace(image));
    EXPECT_EQ(hitPlace(form, image, 0), imagePlace(image));
    image.Visible = false;
    EXPECT_TRUE(paintPlace(form, image).empty());
}

/// COM-26
TEST_F(Composition, EachVisibleControlThatShowsSomethingIsDrawnFromTheLowestOn) {
    Image image(&form, "imgTried");
    CommandButton button(&form, "cmdTried"), hidden(&form, "cmdHidden"), bare(&form, "cmdBare");
    PictureBox box(&form, "pctTried"), filled(&form, "pctFilled");
    image.Move(30, 45);
    image.SetSize(15, 15);
    image.Picture = picture(4, 2);
    button.Move(157, 300);  // ten and nearly a half pixels
    button.SetSize(300, 150);
    button.Picture = picture(99, 99);
    button.DownPicture = picture(20, 10);
    hidden.Picture = picture(5, 5);
    hidden.Visible = false;
    box.Move(600, 600);
    box.SetSize(150, 75);
    box.BackColor = 0x123456;
    filled.Picture = picture(3, 3);
    filled.SetSize(30, 30);

    const auto steps = compositionOf(form, nullptr);
    ASSERT_EQ(steps.size(), 4U);
    EXPECT_EQ(steps[0].control, &image);
    EXPECT_EQ(steps[0].place, (PixelPlace{2, 3, 4, 2})) << "its picture's size";
    EXPECT_EQ(steps[0].picture, &image.Picture.get());
    EXPECT_EQ(steps[1].control, &button);
    EXPECT_EQ(steps[1].place, (PixelPlace{10, 20, 20, 10})) << "its own size";
    EXPECT_EQ(steps[1].picture->width(), 99);
    EXPECT_EQ(steps[2].control, &box);
    EXPECT_EQ(steps[2].picture, nullptr);
    EXPECT_EQ(steps[2].colour, Colour{0x123456});
    EXPECT_EQ(steps[2].place, (PixelPlace{40, 40, 10, 5}));
    EXPECT_EQ(steps[3].control, &filled);
    EXPECT_EQ(steps[3].picture->width(), 3);
    EXPECT_EQ(compositionOf(form, &button)[1].picture->width(), 20) << "held down";
    EXPECT_EQ(pictureShown(bare, true).empty(), true);
    button.DownPicture = Picture();
    EXPECT_EQ(pictureShown(button, true).width(), 99) << "without a picture of its own for that";
}

/// COM-26
TEST_F(Composition, TheMouseIsTakenByWhatIsSeenAndAsFarAsItSays) {
    PictureBox box(&form, "pctTried");
    box.Move(150, 150);
    box.SetSize(15, 90);
    EXPECT_EQ(hitPlace(form, box, 0), (Rectangle{150, 150, 15, 90}));
    box.hitWidth = 900;
    EXPECT_EQ(hitPlace(form, box, 0), (Rectangle{150, 150, 900, 90}));
    EXPECT_EQ(paintPlace(form, box), (Rectangle{150, 150, 15, 90}));
    Label label(&form, "lblTried");
    label.Move(300, 300);
    label.Height = 240;
    EXPECT_EQ(hitPlace(form, label, 600), (Rectangle{300, 300, 600, 240})) << "as wide as its text";
    EXPECT_EQ(hitPlace(form, label, 9999).width, 2700) << "no farther than its place";
    label.Width = 450;
    EXPECT_EQ(hitPlace(form, label, 9999), (Rectangle{300, 300, 450, 240}));
    EXPECT_EQ(paintPlace(form, label), (Rectangle{300, 300, 450, 240}));
    Shape shape(&form, "shpTried");
    shape.SetSize(30, 30);
    EXPECT_EQ(paintPlace(form, shape), (Rectangle{0, 0, 30, 30}));
    EXPECT_TRUE(hitPlace(form, shape, 0).empty());
}

TEST_F(Composition, FilesAreTakenByTheFormElseByTheFirstThatDoes) {
    CommandButton first(&form, "cmdFirst"), second(&form, "cmdSecond");
    EXPECT_EQ(fileTakerOf(form), nullptr);
    second.OLEDragDrop.tie([](const DropData&) {});
    EXPECT_EQ(fileTakerOf(form), &second);
    form.OLEDragDrop.tie([](const DropData&) {});
    EXPECT_EQ(fileTakerOf(form), &form);
    form.Enabled = false;
    EXPECT_EQ(fileTakerOf(form), nullptr);
}

TEST(Rectangles, TheirRightAndBottomEdgesLieOutside) {
    const Rectangle place{10, 20, 30, 40};
    EXPECT_TRUE(place.contains(10, 20));
    EXPECT_TRUE(place.contains(39.9, 59.9));
    EXPECT_FALSE(place.contains(40, 20));
    EXPECT_FALSE(place.contains(10, 60));
    EXPECT_FALSE(place.contains(9.9, 20));
    EXPECT_FALSE(place.contains(10, 19.9));
    EXPECT_EQ(place.scaled(0.5), (Rectangle{5, 10, 15, 20}));
    EXPECT_EQ(common(place, {20, 0, 100, 30}), (Rectangle{20, 20, 20, 10}));
    EXPECT_TRUE(common(place, {40, 0, 100, 30}).empty());
}

TEST(FilePatterns, EveryLetterMatchesInEitherCaseAndNothingElseDoes) {
    EXPECT_TRUE(matchesAnyPattern("ABYZ", "abyz"));
    EXPECT_TRUE(matchesAnyPattern("abyz", "ABYZ"));
    EXPECT_FALSE(matchesAnyPattern("[", "{"));
    EXPECT_FALSE(matchesAnyPattern("@", "`"));
}

TEST(MovieSize, APictureNeedsBothItsSides) {
    constexpr MovieExtent kAnyScreen{15000, 12000};
    for (const auto& [width, height] : {std::pair{0, 100}, {100, 0}, {-1, 100}}) {
        EXPECT_FLOAT_EQ(movieExtent(width, height, 0, kAnyScreen).width, 4800) << width;
        EXPECT_FLOAT_EQ(movieExtent(width, height, 0, kAnyScreen).height, 3630) << width;
    }
    EXPECT_FLOAT_EQ(movieExtent(1, 1, 0, kAnyScreen).width, 15);
}

}  // namespace
}  // namespace corvane
