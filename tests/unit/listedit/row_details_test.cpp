// SPDX-License-Identifier: GPL-3.0-or-later
// What the rows of the editor's list show besides their names.
#include "editor_fixture.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// Tells at once that every file plays for three minutes and five seconds.
class QuickLengths : public LengthReader {
public:
    explicit QuickLengths(EventLoop& loop) : loop_(loop) {}
    void read(const std::string& /*path*/, std::int16_t /*kind*/, Done done) override {
        loop_.post([done = std::move(done)] { done(185'000); });
    }
    void giveUp() override {}

private:
    EventLoop& loop_;
};

class RowDetails : public EditorFixture {
protected:
    RowDetails() {
        ports.lengths = &lengths;
        player.conveniences.texts = true;
        texts.files["/home/ann/Music/a.wav"] = {"Dawn", "Ann", "Mornings", 3, std::make_shared<CoverFile>("/c")};
    }
    ~RowDetails() override { player.forms.clear(); }
    void openList() {
        open();
        goTo("/home/ann/Music");
        push(FileListControls::kAddAll);  // a.wav, b.mid, c.GIF, d.aiff
    }
    PlayListBox& list() { return editor().lstFileList[0]; }
    void widen(int pixels) {
        editor().SetSize(static_cast<Twips>(pixels) * kTwipsPerPixel, editor().Height);
        machine.loop.enter([this] { editor().Resize.raise(); });
        machine.settle();
    }
    void see(int first, int last) {
        machine.loop.enter([&] { list().rowsSeen(first, last); });
        machine.settle();
    }
    Texts headings() {
        Texts shown;
        for (const Label& each : editor().lblDetail) {
            if (each.Visible) shown.push_back(each.Caption);
        }
        return shown;
    }
    Texts details(int row) {
        Texts all;
        for (int i = 0; i < static_cast<int>(list().columns().size()); ++i) all.push_back(list().detailOf(row, i));
        return all;
    }

    QuickLengths lengths{machine.loop};
    FakeTexts& texts = machine.texts;
};

/// EDIT-90: A wide list shows columns of texts and lengths, as many as there is room for, and a narrow one names alone
TEST_F(RowDetails, AWideListShowsColumns) {
    openList();
    EXPECT_EQ(headings(), Texts{});
    EXPECT_TRUE(list().columns().empty());
    const int extent = list().HorizontalExtent;
    EXPECT_GT(extent, 0);
    const auto at = [this](int width) {
        widen(width);
        return headings();
    };
    EXPECT_EQ(at(1070), Texts{});
    EXPECT_EQ(at(1110), (Texts{"TITLE", "LENGTH"}));
    EXPECT_EQ(list().HorizontalExtent, 0) << "names are shortened instead of moved";
    EXPECT_EQ(at(1360), (Texts{"TITLE", "ARTIST", "LENGTH"}));
    EXPECT_EQ(at(1900), (Texts{"TITLE", "ARTIST", "ALBUM", "LENGTH"}));
    EXPECT_EQ(at(860), Texts{});
    EXPECT_EQ(list().HorizontalExtent, extent);
}

/// EDIT-90
TEST_F(RowDetails, HeadingsStandAboveTheirColumnsAndNothingOverlaps) {
    openList();
    for (const int width : {1110, 1360, 1600, 1900, 4000}) {
        widen(width);
        const Label& names = editor().lblFileList[FileListControls::kPlayListHeading];
        Twips end = names.Left + names.Width;
        std::size_t i = 0;
        for (const Label& each : editor().lblDetail) {
            if (!each.Visible) continue;
            const ShowsDetails::Column& column = list().columns().at(i++);
            EXPECT_EQ(each.Left.get(), list().Left + column.left);
            EXPECT_EQ(each.Top.get(), names.Top);
            EXPECT_EQ(each.Width.get(), column.width);
            EXPECT_GE(each.Left.get(), end) << each.Caption.get() << " at " << width;
            end = each.Left + each.Width;
        }
        EXPECT_LE(end, list().Left + list().Width);
        EXPECT_EQ(i, list().columns().size());
    }
}

/// EDIT-91: The columns show the texts of the rows that are seen, without those of pictures, and no others are read
TEST_F(RowDetails, ReadsTheTextsOfTheRowsThatAreSeen) {
    openList();
    see(0, 2);
    EXPECT_EQ(texts.askedForWords, Texts{}) << "a narrow list shows none";
    widen(1900);
    EXPECT_EQ(texts.askedForWords, (Texts{"/home/ann/Music/a.wav", "/home/ann/Music/b.mid"}));
    EXPECT_EQ(details(0), (Texts{"Dawn", "Ann", "Mornings", "3:05"}));
    EXPECT_EQ(details(1), (Texts{"", "", "", "3:05"}));
    EXPECT_EQ(details(2), (Texts{"", "", "", ""})) << "a picture";
    EXPECT_EQ(details(9), (Texts{"", "", "", ""})) << "no row";
    see(3, 3);
    see(0, 3);
    EXPECT_EQ(texts.askedForWords.size(), 3U) << "each once";
    EXPECT_EQ(texts.files["/home/ann/Music/a.wav"].cover.use_count(), 1) << "no cover is held";
}

/// EDIT-91
TEST_F(RowDetails, TextsAreShownAsTheDisplayShowsThem) {
    texts.files["/home/ann/Music/a.wav"].title = "\x83\x68\x83\x8c\x83\x7e\n";
    openList();
    widen(1900);
    see(0, 0);
    EXPECT_EQ(details(0).at(0), "ドレミ");
}

/// EDIT-92: What the player does not read has no column: texts without TEXTS, or where the desktop tells none
TEST_F(RowDetails, WithoutTheConvenienceReadsNoTexts) {
    player.conveniences.texts = false;
    openList();
    widen(1900);
    see(0, 3);
    EXPECT_EQ(headings(), Texts{"LENGTH"});
    EXPECT_EQ(details(0), Texts{"3:05"});
    EXPECT_EQ(texts.askedForWords, Texts{});
}

/// EDIT-92
TEST_F(RowDetails, ADesktopThatReadsNothingHasNoColumns) {
    ports.lengths = nullptr;
    ports.texts = nullptr;
    openList();
    widen(1900);
    see(0, 3);
    EXPECT_EQ(headings(), Texts{});
    EXPECT_TRUE(list().columns().empty());
}

/// EDIT-93: Rows leave room for pictures where the list holds one, and pictures alone have one
TEST_F(RowDetails, PicturesStandInFrontOfTheirNames) {
    openList();
    EXPECT_TRUE(list().hasPictures());
    EXPECT_EQ(list().pictureFileOf(2), "/home/ann/Music/c.GIF");
    for (const int other : {0, 1, 3, 4}) EXPECT_EQ(list().pictureFileOf(other), "") << other;
    doubleClick(list(), 2);
    EXPECT_FALSE(list().hasPictures());
}

}  // namespace
}  // namespace corvane
