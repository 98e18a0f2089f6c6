// SPDX-License-Identifier: GPL-3.0-or-later
// Drive, folder and file boxes and the type filters.
#include "editor_fixture.h"
#include "listedit/filters.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// EDIT-03: The nine type filters have their texts and patterns, in their order
/// EDIT-04: The sound filter's last pattern ends with a parenthesis, so it lists no .AIFF file
TEST(TypeFilters, AreNineWithTheirPatternsInOrder) {
    const auto filters = typeFilters(MediaTypes());
    ASSERT_EQ(filters.size(), 9U);
    EXPECT_EQ(filters[0].entry, "All Files(MultiMediaFiles)");
    EXPECT_EQ(filters[0].patterns,
              "*.CDA;*.BMP;*.JPEG;*.JPG;*.GIF;*.AVI;*.MOV;*.QT;*.MID;*.RMI;*.MPG;*.MPV;*.MP2;*.WAV;*.MP3;*.M1V;"
              "*.MPEG;*.RA;*.RM;*.RAM;*.RMM;*.SND;*.AU;*.AIF;*.AIFC;*.AIFF");
    EXPECT_EQ(filters[1].entry, "CD Audio(*.CDA)");
    EXPECT_EQ(filters[1].patterns, "*.CDA");
    EXPECT_EQ(filters[2].entry, "Image Files(*.BMP;*.JPG;*.JPEG)");
    EXPECT_EQ(filters[2].patterns, "*.BMP;*.JPEG;*.JPG;*.GIF");
    EXPECT_EQ(filters[3].entry, "MIDI Files(*.MID;*.RMI)");
    EXPECT_EQ(filters[3].patterns, "*.MID;*.RMI");
    EXPECT_EQ(filters[4].entry, "MP3 File(*.MP3)");
    EXPECT_EQ(filters[4].patterns, "*.MP3");
    EXPECT_EQ(filters[5].entry, "Mpeg Files(*.MPG;*.MPV;*.MP2;*.M1V;*.MPEG)");
    EXPECT_EQ(filters[5].patterns, "*.MPG;*.MPV;*.MP2;*.M1V;*.MPEG");
    EXPECT_EQ(filters[6].entry, "Quick Time Files(*.MOV;*.QT)");
    EXPECT_EQ(filters[6].patterns, "*.MOV;*.QT");
    EXPECT_EQ(filters[7].entry, "Sound Files(*.WAV;*.SND;*.AU;*.AIF;*.AIFC;*.AIFF)");
    EXPECT_EQ(filters[7].patterns, "*.WAV;*.SND;*.AU;*.AIF;*.AIFC;*.AIFF)");
    EXPECT_EQ(filters[8].entry, "Video File(*.AVI)");
    EXPECT_EQ(filters[8].patterns, "*.AVI");
}

/// EDIT-57: The search begins at home on its drive, without a home where the program is, and later where the last one
///     ended
TEST_F(EditorFixture, TheSearchBeginsAtHomeOnItsDrive) {
    open();
    EXPECT_EQ(editor().drvFileList.items(), (Texts{"Computer", "Home", "Disc"}));
    EXPECT_EQ(editor().drvFileList.ListIndex, 1);
    EXPECT_EQ(editor().dirFileList.Path.get(), "/home/ann");
    EXPECT_EQ(editor().dirFileList.items(), (Texts{"/home/ann", "  Music", "  Videos"}));
    EXPECT_EQ(editor().dirFileList.ListIndex, 0);
    EXPECT_EQ(editor().fleFileList.items(), Texts{"first.mp3"});
}

/// EDIT-57
TEST_F(EditorFixture, WithoutAHomeItBeginsWhereTheProgramIs) {
    machine.files.offeredDrives = {{"Computer", "/"}};
    open();
    EXPECT_EQ(editor().dirFileList.Path.get(), "/app");
    EXPECT_EQ(editor().dirFileList.items(), (Texts{"/", "  app"}));
    EXPECT_EQ(editor().dirFileList.ListIndex, 1);
}

TEST_F(EditorFixture, WithoutADriveTheWayBeginsAtTheRoot) {
    machine.files.offeredDrives.clear();
    open();
    EXPECT_EQ(editor().dirFileList.items(), (Texts{"/", "  app"}));
}

/// EDIT-57
TEST_F(EditorFixture, TheNextOpeningShowsTheFolderOfTheLastOne) {
    open();
    goTo("/home/ann/Music");
    push(FileListControls::kCancel);
    open();
    EXPECT_EQ(editor().dirFileList.Path.get(), "/home/ann/Music");
    EXPECT_EQ(editor().fleFileList.count(), 4);
}

/// EDIT-60: Opening reads the folder that it shows and no other
TEST_F(EditorFixture, OpeningReadsTheFolderThatItShowsAndNoOther) {
    player.editorFolder = "/home/ann/Music";
    click(kEditor);
    int looks = 0;
    for (const std::string& each : machine.log.allCalls("files")) {
        if (each.rfind("files.list ", 0) != 0 && each.rfind("files.folders ", 0) != 0) continue;
        EXPECT_NE(each.find(" /home/ann/Music"), std::string::npos) << each;
        ++looks;
    }
    EXPECT_GT(looks, 0);
    EXPECT_EQ(editor().dirFileList.Path.get(), "/home/ann/Music");
}

/// EDIT-58: A folder that is gone gives way to the nearest above it
TEST_F(EditorFixture, AFolderThatIsGoneGivesWayToTheNearestAboveIt) {
    player.editorFolder = "/home/ann/Music/gone/deeper";
    open();
    EXPECT_EQ(editor().dirFileList.Path.get(), "/home/ann/Music");
}

/// EDIT-55: The file box shows the folder of the folder box
TEST_F(EditorFixture, ADoubleClickGoesIntoAFolderAndBackUp) {
    open();
    doubleClick(editor().dirFileList, 1);
    EXPECT_EQ(editor().dirFileList.Path.get(), "/home/ann/Music");
    EXPECT_EQ(editor().dirFileList.items(), (Texts{"/home/ann", "  Music"}));
    EXPECT_EQ(editor().dirFileList.ListIndex, 1);
    EXPECT_EQ(editor().fleFileList.items(), (Texts{"a.wav", "b.mid", "c.GIF", "d.aiff"}));
    doubleClick(editor().dirFileList, 0);
    EXPECT_EQ(editor().dirFileList.Path.get(), "/home/ann");
}

/// EDIT-53: A drive puts its folder into the folder box
TEST_F(EditorFixture, ADriveShowsItsRootFolder) {
    open();
    pick(editor().drvFileList, {0});
    EXPECT_EQ(editor().drvFileList.Drive.get(), "/");
    EXPECT_EQ(editor().dirFileList.Path.get(), "/");
    EXPECT_EQ(editor().dirFileList.items(), (Texts{"/", "  app", "  home", "  media"}));
    goTo("/home/ann/Music");
    EXPECT_EQ(editor().dirFileList.items(), (Texts{"/", "  home", "    ann", "      Music"}));
}

/// A disc's name is what its maker wrote.
/// COM-29
TEST_F(EditorFixture, ADriveMakesNoLineOfTheBox) {
    machine.files.offeredDrives = {{"Home", "/home/ann", true}, {"Disc\r\nFormat it?\n", "/media/cdrom"}};
    open();
    pick(editor().drvFileList, {1});
    machine.settle();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "Disc  Format it?  Drive Can't Open !!");
}

/// EDIT-54: A drive that cannot be read gives the stop box of its text and " Drive Can't Open !!"; the drive stays
///     chosen, folder and files stay as they were
TEST_F(EditorFixture, ADriveThatCannotBeReadSaysSoAndLeavesTheOtherBoxes) {
    open();
    pick(editor().drvFileList, {2});
    machine.settle();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0],
              (FakeDialogs::Box{"Disc Drive Can't Open !!", "Corvane", Buttons::Ok, Icon::Stop}));
    EXPECT_EQ(editor().drvFileList.ListIndex, 2);
    EXPECT_EQ(editor().drvFileList.Drive.get(), "/media/cdrom");
    EXPECT_EQ(editor().dirFileList.Path.get(), "/home/ann");
    EXPECT_EQ(editor().fleFileList.items(), Texts{"first.mp3"});
}

/// EDIT-54
TEST_F(EditorFixture, AClosedDriveIsTriedAgainWhenItIsChosenAgain) {
    open();
    const auto boxesAfter = [this](int drive) {
        pick(editor().drvFileList, {drive});
        machine.settle();
        return machine.dialogs.boxes.size();
    };
    EXPECT_EQ(boxesAfter(2), 1U);
    EXPECT_EQ(boxesAfter(2), 2U);
    EXPECT_EQ(boxesAfter(1), 2U);
}

/// A box has a loop of its own, in which the widget that raised the choice could go.
TEST_F(EditorFixture, TheBoxOfAClosedDriveComesWhenTheDriveBoxIsDone) {
    open();
    pick(editor().drvFileList, {2});
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    machine.settle();
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U);
}

TEST_F(EditorFixture, TheBoxOfAClosedDriveDoesNotComeBehindTheEditor) {
    open();
    pick(editor().drvFileList, {2});
    machine.loop.enter([&] { editor().cmdFileList[FileListControls::kCancel].Click.raise(); });
    machine.settle();
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

/// EDIT-59: Choosing the drive that is shown stays in its folder
TEST_F(EditorFixture, ChoosingTheDriveThatIsShownStaysInItsFolder) {
    open();
    goTo("/home/ann/Music");
    pick(editor().drvFileList, {1});
    EXPECT_EQ(editor().dirFileList.Path.get(), "/home/ann/Music");
}

/// EDIT-05
TEST_F(EditorFixture, AFilterListsItsFilesAndIsKept) {
    open();
    goTo("/home/ann/Music");
    combo(0).ListIndex = 2;
    EXPECT_EQ(editor().fleFileList.items(), Texts{"c.GIF"});
    EXPECT_EQ(player.gPattern, 2);
    combo(0).ListIndex = 0;
    EXPECT_EQ(editor().fleFileList.count(), 4);
    EXPECT_EQ(player.gPattern, 0);
}

/// EDIT-04
TEST_F(EditorFixture, TheSoundFilterDoesNotListAiffFiles) {
    open();
    goTo("/home/ann/Music");
    combo(0).ListIndex = 7;
    EXPECT_EQ(editor().fleFileList.items(), Texts{"a.wav"});
}

/// EDIT-05: A filter is found by its text, not by its place; choosing it lists its files and keeps its number
TEST_F(EditorFixture, TheFilterGoesByItsTextNotByItsPlace) {
    open();
    goTo("/home/ann/Music");
    combo(0).setItems({"Video File(*.AVI)", "MIDI Files(*.MID;*.RMI)"});
    combo(0).ListIndex = 1;
    EXPECT_EQ(player.gPattern, 3);
    EXPECT_EQ(editor().fleFileList.items(), Texts{"b.mid"});
}

/// EDIT-06: A chosen zoom is in force at once
TEST_F(EditorFixture, TheZoomChoicesAreTakenAtOnce) {
    open();
    combo(1).ListIndex = 4;
    combo(2).ListIndex = 1;
    EXPECT_EQ(player.gMovieZoom, 4);
    EXPECT_EQ(player.gImageZoom, 1);
}

/// EDIT-07: A chosen interval is in force at once, a typed one at OK
TEST_F(EditorFixture, AChosenIntervalIsTakenAtOnceATypedOneIsNot) {
    open();
    combo(3).ListIndex = 4;
    EXPECT_EQ(player.gInterval, 20);
    combo(3).ListIndex = -1;
    combo(3).Text = "33";
    EXPECT_EQ(player.gInterval, 20);
}

/// EDIT-28: In a folder that is a root the path has one separator
TEST_F(EditorFixture, PathsOfADriveLetterRootHaveOneBackslash) {
    machine.files.slash = '\\';
    machine.files.add("C:\\tune.mid");
    machine.files.add("C:\\Deep\\song.mid");
    machine.files.offeredDrives = {{"C:", "C:\\", true}};
    open();
    EXPECT_EQ(editor().dirFileList.items(), (Texts{"C:\\", "  Deep"}));
    push(FileListControls::kAddAll);
    doubleClick(editor().dirFileList, 1);
    push(FileListControls::kAddAll);
    EXPECT_EQ(paths(), (Texts{"C:\\tune.mid", "C:\\Deep\\song.mid"}));
}

TEST_F(EditorFixture, TheFirstFileAndTheFirstRowAreLikeTheOthers) {
    open();
    goTo("/home/ann/Music");
    doubleClick(editor().fleFileList, 0);
    EXPECT_EQ(names(), std::vector<std::string>{"a.wav"});
    pick(editor().lstFileList[0], {0});
    push(FileListControls::kDelete);
    EXPECT_TRUE(names().empty());
    EXPECT_TRUE(paths().empty());
}

TEST_F(EditorFixture, AFolderWhoseNameBeginsLikeADriveIsNotOnIt) {
    machine.files.addFolder("/home/annex");
    player.editorFolder = "/home/annex";
    open();
    EXPECT_EQ(editor().drvFileList.ListIndex, 0);
    EXPECT_EQ(editor().dirFileList.items().front(), "/");
}

TEST(TypeFilters, KnowWhatIsNoneOfThem) {
    const auto filters = typeFilters(MediaTypes());
    EXPECT_EQ(findTypeFilter(filters, "Some Files(*.x)"), -1);
    EXPECT_EQ(findTypeFilter(filters, filters[0].entry), 0);
    EXPECT_EQ(findTypeFilter(filters, filters[8].entry), 8);
}

}  // namespace
}  // namespace corvane
