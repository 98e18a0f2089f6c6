// SPDX-License-Identifier: GPL-3.0-or-later
// The editor at its limits: the first row, a folder whose name begins like a drive's, an entry that is no filter.
#include "editor_fixture.h"
#include "listedit/filters.h"

namespace corvane {
namespace {

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
    EXPECT_EQ(findTypeFilter("Some Files(*.x)"), -1);
    EXPECT_EQ(findTypeFilter(typeFilters()[0].entry), 0);
    EXPECT_EQ(findTypeFilter(typeFilters()[8].entry), 8);
}

}  // namespace
}  // namespace corvane
