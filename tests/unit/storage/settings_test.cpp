// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/settings.h"

#include <algorithm>
#include <limits>
#include <set>

#include "fake/kept_part.h"
#include "storage/profile_file.h"
#include "unit/startup/startup_fixture.h"

namespace corvane {
namespace {

using mdlDefinePublic::PlayerState;

class Settings : public StartupFixture {
protected:
    void read(const std::string& lines) {
        settings(lines);
        readSettings(player);
    }
};

/// SET-05: A start makes no file and writes none
/// SET-08: A missing file, section or key gives every default, without a box
/// SET-23: The eleven keys have the defaults P M R S z x c , . u d in their own mixed case
/// SET-09, SET-10, SET-11, SET-12, SET-14, SET-15, SET-16, SET-17, SET-18, SET-19, SET-20, SET-21, SET-22
TEST_F(Settings, AMissingFileGivesEveryDefault) {
    readSkinNames(player);
    readSettings(player);

    EXPECT_EQ(player.gBitmapFileName, "DEFAULT.BMP");
    EXPECT_EQ(player.gTextFileName, "DEFAULT.CSV");
    EXPECT_EQ(player.gWindowPos, 0);
    EXPECT_EQ(player.gDelayTime, 500);
    EXPECT_EQ(player.gAuxType, -1);
    EXPECT_FALSE(player.gAutoPlay);
    EXPECT_FALSE(player.gQuickPlay);
    EXPECT_EQ(player.gPattern, 0);
    EXPECT_EQ(player.gMovieZoom, 0);
    EXPECT_EQ(player.gImageZoom, 0);
    EXPECT_EQ(player.gInterval, 0);
    EXPECT_EQ(player.gListNumber, 0);
    EXPECT_EQ(player.gPageNumber, 0);
    EXPECT_TRUE(player.gImageHide);
    std::string keys;
    for (const KeySetting& each : keySettings()) keys += static_cast<char>(player.*each.variable);
    EXPECT_EQ(keys, "PMRSzxc,.ud");
    EXPECT_FALSE(machine.files.has("/app/KADO.INI"));
}

/// SET-09: BITMAPFILE names the skin's bitmap inside PANELSET; default DEFAULT.BMP
/// SET-10: TEXTFILE names the skin's text inside PANELSET; default DEFAULT.CSV
/// SET-11: WINDOWPOS is the window mode 0, 1 or 2; default 0
/// SET-12: DELAYTIME is the delay between movies in milliseconds; default 500
/// SET-13: AUXTYPE is the volume device: -1 wave output, 0 and up an auxiliary device, -2 choose one; default -1
/// SET-14: AUTOPLAY is ON or OFF; default off
/// SET-15: QUICK is ON or OFF; default off
/// SET-16: PATTERN is the editor's file-type filter; default 0
/// SET-17: MOVIEZOOM is the movie zoom; default 0
/// SET-18: IMAGEZOOM is the picture zoom; default 0
/// SET-19: INTERVAL is how many seconds a picture is shown; default 0
/// SET-20: FILENUM is the current list of its page, 0 to 9; default 0
/// SET-21: PAGENUM is the current page, 0 to 9; default 0
/// SET-22: IMAGEHIDE is ON or OFF; default on
/// SET-23
TEST_F(Settings, EveryKeyIsRead) {
    player.gIsWin9x = true;
    read(
        "BITMAPFILE=A.BMP\nTEXTFILE=B.CSV\nWINDOWPOS=2\nDELAYTIME=700\nAUXTYPE=3\nAUTOPLAY=ON\nQUICK=ON\nPATTERN=8\n"
        "MOVIEZOOM=5\nIMAGEZOOM=4\nINTERVAL=60\nFILENUM=9\nPAGENUM=7\nIMAGEHIDE=OFF\nPOWER_Click=1\nMIN_Click=2\n"
        "REPEAT_Click=3\nSHUFFLE_Click=4\nPLAY_Click=5\nPAUSE_Click=6\nSTOP_Click=7\nPREV_Click=8\nNEXT_Click=9\n"
        "VOLUME_Up=a\nVOLUME_Down=b\n");
    readSkinNames(player);

    EXPECT_EQ(player.gBitmapFileName, "A.BMP");
    EXPECT_EQ(player.gTextFileName, "B.CSV");
    EXPECT_EQ(player.gWindowPos, 2);
    EXPECT_EQ(player.gDelayTime, 700);
    EXPECT_EQ(player.gAuxType, 3);
    EXPECT_TRUE(player.gAutoPlay);
    EXPECT_TRUE(player.gQuickPlay);
    EXPECT_EQ(player.gPattern, 8);
    EXPECT_EQ(player.gMovieZoom, 5);
    EXPECT_EQ(player.gImageZoom, 4);
    EXPECT_EQ(player.gInterval, 60);
    EXPECT_EQ(player.gListNumber, 9);
    EXPECT_EQ(player.gPageNumber, 7);
    EXPECT_FALSE(player.gImageHide);
    EXPECT_EQ(player.gKeyPower, '1');
    EXPECT_EQ(player.gKeyMin, '2');
    EXPECT_EQ(player.gKeyRepeat, '3');
    EXPECT_EQ(player.gKeyShuffle, '4');
    EXPECT_EQ(player.gKeyPlay, '5');
    EXPECT_EQ(player.gKeyPause, '6');
    EXPECT_EQ(player.gKeyStop, '7');
    EXPECT_EQ(player.gKeyPrev, '8');
    EXPECT_EQ(player.gKeyNext, '9');
    EXPECT_EQ(player.gKeyVolumeUp, 'a');
    EXPECT_EQ(player.gKeyVolumeDown, 'b');
}

/// SET-32: AUTOPLAY and QUICK are on for exactly ON; any other text, lower case included, is off
/// SET-41
TEST_F(Settings, SwitchesCountOnlyAsExactlyOn) {
    for (const char* text : {"on", "On", "OFF", "1", "ONE", "", "O N"}) {
        read("AUTOPLAY=" + std::string(text) + "\nQUICK=" + text + "\n");
        EXPECT_FALSE(player.gAutoPlay) << text;
        EXPECT_FALSE(player.gQuickPlay) << text;
    }
    read(std::string("AUTOPLAY= ON \nQUICK=ON\0x\n", 24));
    EXPECT_TRUE(player.gAutoPlay);
    EXPECT_TRUE(player.gQuickPlay);
}

/// SET-33: IMAGEHIDE is off for exactly OFF; an empty value, lower case and any other word leave it on
TEST_F(Settings, OnlyOffTurnsImageHidingOff) {
    for (const char* text : {"off", "Off", "ON", "0", "", "no"}) {
        player.gImageHide = false;
        read("IMAGEHIDE=" + std::string(text) + "\n");
        EXPECT_TRUE(player.gImageHide) << text;
    }
    read("IMAGEHIDE=OFF\n");
    EXPECT_FALSE(player.gImageHide);
}

/// SET-27: A number is rounded to a whole one, halves to the even side: 2.5 is 2, 3.5 is 4
TEST_F(Settings, NumbersRoundHalvesToEven) {
    read("DELAYTIME=2.5\nINTERVAL=3.5\n");
    EXPECT_EQ(player.gDelayTime, 2);
    EXPECT_EQ(player.gInterval, 4);
}

/// SET-26: A delay that is no number is 500
TEST_F(Settings, ADelayThatIsNoNumberIs500) {
    player.gDelayTime = 9;
    read("DELAYTIME=soon\n");
    EXPECT_EQ(player.gDelayTime, 500);
}

/// SET-24: Before the numbers are read, the delay is 500, the device -1 and the filter 0; the others stay as they are
TEST_F(Settings, ThreeNumbersBeginAtTheirDefaultsAndTheOthersStay) {
    player.gDelayTime = 9;
    player.gAuxType = 3;
    player.gPattern = 4;
    player.gMovieZoom = 2;
    read("");
    EXPECT_EQ(player.gDelayTime, 500);
    EXPECT_EQ(player.gAuxType, -1);
    EXPECT_EQ(player.gPattern, 0);
    EXPECT_EQ(player.gMovieZoom, 2);
}

/// SET-07: There is no version and no check of the whole: each key stands for itself
/// SET-25: A text that is no number leaves the default alone, silently
TEST_F(Settings, TextThatIsNoNumberLeavesADefaultAlone) {
    read("WINDOWPOS=top\nPATTERN=x\nMOVIEZOOM=1 2\nIMAGEZOOM=\nINTERVAL=5s\nFILENUM=one\nPAGENUM=--1\n");
    EXPECT_EQ(player.gWindowPos, 0);
    EXPECT_EQ(player.gPattern, 0);
    EXPECT_EQ(player.gMovieZoom, 0);
    EXPECT_EQ(player.gImageZoom, 0);
    EXPECT_EQ(player.gInterval, 0);
    EXPECT_EQ(player.gListNumber, 0);
    EXPECT_EQ(player.gPageNumber, 0);
}

/// SET-30: A number that makes no sense acts as the default and stays in the file
TEST_F(Settings, NumbersThatMakeNoSenseActAsTheDefaultAndStayInTheFile) {
    player.gIsWin9x = true;
    const std::string lines =
        "WINDOWPOS=9\nDELAYTIME=0\nAUXTYPE=-3\nPATTERN=99\nMOVIEZOOM=77\nIMAGEZOOM=-1\nINTERVAL=-5\nFILENUM=12\n"
        "PAGENUM=10\n";
    read(lines);
    EXPECT_EQ(player.gWindowPos, 0);
    EXPECT_EQ(player.gDelayTime, 500);
    EXPECT_EQ(player.gAuxType, -1);
    EXPECT_EQ(player.gPattern, 0);
    EXPECT_EQ(player.gMovieZoom, 0);
    EXPECT_EQ(player.gImageZoom, 0);
    EXPECT_EQ(player.gInterval, 0);
    EXPECT_EQ(player.gListNumber, 0);
    EXPECT_EQ(player.gPageNumber, 0);
    EXPECT_EQ(machine.files.bytes("/app/KADO.INI"), "[KADO]\r\n" + lines);
}

/// SET-29: A number outside 16 bits acts as the default and is no error
TEST_F(Settings, NumbersOutside16BitsKeepTheDefault) {
    for (const char* number : {"32768", "65536", "-40000", "99999999999999", "1e300", "&HFFFFF"}) {
        read("DELAYTIME=" + std::string(number) + "\nINTERVAL=" + number + "\n");
        EXPECT_EQ(player.gDelayTime, 500) << number;
        EXPECT_EQ(player.gInterval, 0) << number;
    }
    read("DELAYTIME=32767\n");
    EXPECT_EQ(player.gDelayTime, 32767);
}

/// SET-31: The volume device is read on the old platform family alone; elsewhere the wave output is used whatever the
///     file says
/// SET-13, START-04
TEST_F(Settings, TheVolumeDeviceIsReadOnTheOldFamilyOnly) {
    read("AUXTYPE=2\n");
    EXPECT_EQ(player.gAuxType, -1);
    player.gIsWin9x = true;
    read("AUXTYPE=2\n");
    EXPECT_EQ(player.gAuxType, 2);
    read("AUXTYPE=-2\n");
    EXPECT_EQ(player.gAuxType, -2);
}

/// SET-34: A key is the first character of its text; the rest is ignored
/// SET-35: An empty key text gives the default key at the next start
TEST_F(Settings, AKeyIsTheFirstCharacterOfItsText) {
    read("POWER_Click=Quit\nMIN_Click=\nREPEAT_Click=\"\nSTOP_Click=\" \"\n");
    EXPECT_EQ(player.gKeyPower, 'Q');
    EXPECT_EQ(player.gKeyMin, 'M');
    EXPECT_EQ(player.gKeyRepeat, '"');
    EXPECT_EQ(player.gKeyStop, ' ');
}

/// SET-36: A character outside ASCII is its code point, and a byte where the text is not UTF-8
TEST_F(Settings, KeysBeyondAsciiAreCodePointsOrBytes) {
    read("POWER_Click=\xC3\xA9t\xC3\xA9\nMIN_Click=\xE3\x81\x82\nREPEAT_Click=\xE9\nSHUFFLE_Click=\xE8\xAA\xAC\n");
    EXPECT_EQ(player.gKeyPower, 0xE9);
    EXPECT_EQ(player.gKeyMin, 0x3042);
    EXPECT_EQ(player.gKeyRepeat, 0xE9);
    EXPECT_EQ(player.gKeyShuffle, 'S') << "needs 16 bits: keeps its default";
}

/// SET-36
TEST(CharacterCode, AndItsTextAreInverse) {
    for (int code = 1; code <= 0x7FFF; ++code) {
        ASSERT_EQ(characterCode(characterText(static_cast<std::int16_t>(code)) + "x"), code);
    }
    EXPECT_EQ(characterText(0x7F), "\x7F");
    EXPECT_EQ(characterText(0x80), "\xC2\x80");
    EXPECT_EQ(characterText(0), "");
    EXPECT_EQ(characterText(-1), "");
    EXPECT_EQ(characterCode(""), std::nullopt);
    EXPECT_EQ(characterCode("\xF0\x9F\x8E\xB5"), std::nullopt);
    EXPECT_EQ(characterCode("\xC0\x80"), 0xC0);
    EXPECT_EQ(characterCode("\xE0\x80\x80"), 0xE0);
    EXPECT_EQ(characterCode("\xE3\x81"), 0xE3);
    EXPECT_EQ(characterCode("\x81\x81\x81\x81"), 0x81);
    EXPECT_EQ(characterCode("\xF5\x81\x81\x81"), 0xF5);
}

/// SET-37: An empty skin name, blanks included, is the default skin's
/// START-07
TEST_F(Settings, EmptySkinNamesAreTheDefaultSkin) {
    settings("BITMAPFILE=\nTEXTFILE= \n");
    readSkinNames(player);
    EXPECT_EQ(player.gBitmapFileName, "DEFAULT.BMP");
    EXPECT_EQ(player.gTextFileName, "DEFAULT.CSV");
}

/// SET-40: A value holds at most 511 bytes; the rest is cut off
TEST_F(Settings, LongTextsAreCutAt511Bytes) {
    settings("BITMAPFILE=" + std::string(600, 'x') + "\n");
    EXPECT_EQ(ReadSettingText(player, "BITMAPFILE"), std::string(511, 'x'));
}

/// SET-03: Every key stands in the section KADO
/// SET-47: The first write makes file and section
/// SET-01
TEST_F(Settings, TheFirstWriteMakesTheFile) {
    WriteSetting(player, "AUTOPLAY", switchText(true));
    EXPECT_EQ(machine.files.bytes("/app/KADO.INI"), "[KADO]\r\nAUTOPLAY=ON\r\n");
    EXPECT_EQ(ReadSettingText(player, "autoplay"), "ON");
}

/// SET-63: Several keys are one replacement of the file, with the same result as single ones
TEST_F(Settings, SeveralKeysAreOneReplacement) {
    settings("AUTOPLAY=OFF\r\n");
    EXPECT_TRUE(writeSettings(player, {{"QUICK", "ON"}, {"AUTOPLAY", "ON"}, {"PAGENUM", "3"}}));
    EXPECT_EQ(machine.files.bytes("/app/KADO.INI"), "[KADO]\r\nAUTOPLAY=ON\r\nQUICK=ON\r\nPAGENUM=3\r\n");
    EXPECT_EQ(machine.calls("files"), std::vector<std::string>{"files.replace /app/KADO.INI"});
}

/// SET-57: A write that fails is silent, leaves the file as it was, and the setting is in force for the run
TEST_F(Settings, AFailedWriteIsSilentAndLeavesTheFile) {
    settings("AUTOPLAY=OFF\r\n");
    machine.files.failReplace = true;
    WriteSetting(player, "AUTOPLAY", "ON");
    EXPECT_FALSE(writeSettings(player, {{"AUTOPLAY", "ON"}}));
    EXPECT_EQ(ReadSettingText(player, "AUTOPLAY"), "OFF");
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

/// SET-46: A file over 8 MiB reads as empty and is never written over
TEST_F(Settings, AnAbsurdlyLongFileReadsAsEmptyAndIsNeverWrittenOver) {
    settings("AUTOPLAY=ON\r\n;" + std::string(kMostProfileBytes, 'x'));
    readSettings(player);
    EXPECT_FALSE(player.gAutoPlay);
    EXPECT_FALSE(writeSettings(player, {{"AUTOPLAY", "OFF"}}));
    EXPECT_TRUE(machine.calls("files").empty());
}

/// SET-45: A damaged, binary or cut-off file gives defaults
/// SET-07
TEST_F(Settings, BinaryAndTruncatedFilesGiveDefaults) {
    std::string noise;
    for (int i = 0; i < 50'000; ++i) noise += static_cast<char>((i * 7919 + i / 13) & 0xFF);
    for (const std::string& text :
         {noise, std::string(1'000, '\0'), std::string("[KADO"), std::string("[KADO]\r\nDELAYTI")}) {
        machine.files.add("/app/KADO.INI", text);
        readSkinNames(player);
        readSettings(player);
        EXPECT_EQ(player.gDelayTime, 500);
        EXPECT_EQ(player.gBitmapFileName, "DEFAULT.BMP");
        EXPECT_EQ(player.gKeyPlay, 'z');
    }
}

/// SET-25
TEST_F(Settings, TextThatIsNoNumberLeavesWhatWasReadBefore) {
    read("WINDOWPOS=2\nMOVIEZOOM=3\nIMAGEZOOM=4\nINTERVAL=20\nFILENUM=5\nPAGENUM=6\n");
    for (const char* text : {"x", "1 2", "", "5s", "--1", "&H"}) {
        SCOPED_TRACE(text);
        std::string lines;
        for (const char* key : {"WINDOWPOS", "MOVIEZOOM", "IMAGEZOOM", "INTERVAL", "FILENUM", "PAGENUM"}) {
            lines += std::string(key) + "=" + text + "\n";
        }
        read(lines);
        EXPECT_EQ(player.gWindowPos, 2);
        EXPECT_EQ(player.gMovieZoom, 3);
        EXPECT_EQ(player.gImageZoom, 4);
        EXPECT_EQ(player.gInterval, 20);
        EXPECT_EQ(player.gListNumber, 5);
        EXPECT_EQ(player.gPageNumber, 6);
    }
}

// --- Conveniences ----------------------------------------------------------------------------------------------------

struct ConvenienceKeys : Settings {
    Conveniences read(const std::string& lines) {
        machine.files.add("/app/KADO.INI", lines);
        readConveniences(player);
        return player.conveniences;
    }
};

TEST_F(ConvenienceKeys, APlainStartHasNoneAndTheDesktopsHasAll) {
    EXPECT_EQ(read(""), Conveniences());
    machine.process.byDesktop = true;
    EXPECT_EQ(read(""), kAllConveniences);
}

/// SET-67: Conveniences are in force by how the player is started, where the settings file does not say otherwise for
///     all of them or for one
TEST_F(ConvenienceKeys, TheFileHasTheLastWordForAllAndThenForEach) {
    EXPECT_EQ(read("[KADO]\nCONVENIENCES=ON\n"), kAllConveniences);
    Conveniences butNames = kAllConveniences;
    butNames.names = false;
    EXPECT_EQ(read("[CONVENIENCES]\nNAMES=OFF\n[KADO]\nCONVENIENCES=ON\n"), butNames);
    machine.process.byDesktop = true;
    EXPECT_EQ(read("[CONVENIENCES]\nNAMES=OFF\n"), butNames);
    EXPECT_EQ(read("[KADO]\nCONVENIENCES=OFF\n"), Conveniences());
    Conveniences onlyLong;
    onlyLong.longLists = true;
    EXPECT_EQ(read("[KADO]\nCONVENIENCES=OFF\n[CONVENIENCES]\nLONG=ON\n"), onlyLong);
}

TEST_F(ConvenienceKeys, EachHasAKeyOfItsOwn) {
    std::string expected = "1000000000";  // keys and flags stand in the same order
    for (const char* key :
         {"NAMES", "KINDS", "TEXTS", "LOUDNESS", "LISTS", "LONG", "PLAYS", "FIND", "HANDS", "RESUME"}) {
        const Conveniences one = read("[CONVENIENCES]\n" + std::string(key) + "=ON\n");
        std::string flags;
        for (bool each : {one.names, one.kinds, one.texts, one.loudness, one.lists, one.longLists, one.plays, one.find,
                          one.hands, one.resume}) {
            flags += each ? '1' : '0';
        }
        EXPECT_EQ(flags, expected) << key;
        std::rotate(expected.rbegin(), expected.rbegin() + 1, expected.rend());
    }
}

/// What is neither, and what stands in another section, says nothing.
TEST_F(ConvenienceKeys, OtherTextsLeaveThemAsTheStartHasThem) {
    for (const char* odd : {"[KADO]\nCONVENIENCES=on\n", "[KADO]\nCONVENIENCES=YES\nNAMES=ON\n",
                            "[KADO]\nCONVENIENCES=\n", "[CONVENIENCES]\nNAMES=1\nCONVENIENCES=ON\n", "NAMES=ON\n"}) {
        machine.process.byDesktop = false;
        EXPECT_EQ(read(odd), Conveniences()) << odd;
    }
}

// --- The schema ------------------------------------------------------------------------------------------------------

struct Values {
    std::string operator()(const NumberSetting& number) const {
        const bool hasEnd = number.most < std::numeric_limits<std::int16_t>::max();
        return std::to_string(number.least) + (hasEnd ? " to " + std::to_string(number.most) : " and up");
    }
    std::string operator()(const SwitchSetting& /*one*/) const { return "ON, OFF"; }
    std::string operator()(const KeySetting& /*key*/) const { return "a character"; }
    std::string operator()(const TextSetting& /*text*/) const { return "a file's name"; }
    std::string operator()(const ConvenienceSetting& /*each*/) const { return "ON, OFF"; }
    std::string operator()(const DesktopSetting& /*text*/) const { return "AUTO, ON, OFF"; }
};

std::string manualOf(const SettingsSchema& schema) {
    std::vector<std::vector<std::string>> rows;
    for (const Setting& each : schema) {
        if (each.writtenBy == WrittenBy::Conveniences) continue;
        rows.push_back({each.key, std::visit(Values(), each.value), settingDefault(each), each.meaning,
                        each.writtenBy == WrittenBy::Editor ? "editor"
                        : each.writtenBy == WrittenBy::Hand ? "by hand"
                                                            : "settings"});
    }
    return manualRows(rows);
}

/// Those of the conveniences, with the section that each stands in.
std::string conveniencesOf(const SettingsSchema& schema) {
    std::vector<std::vector<std::string>> rows;
    for (const Setting& each : schema) {
        if (each.writtenBy != WrittenBy::Conveniences) continue;
        rows.push_back({each.key, "[" + std::string(each.section) + "]", each.meaning});
    }
    return manualRows(rows);
}

TEST(SettingsSchema, EachKeyStandsThereOnceWithAVariableOfItsOwn) {
    std::set<std::string> keys;
    std::vector<std::int16_t PlayerState::*> numbers;
    for (const Setting& each : settingsSchema()) {
        EXPECT_TRUE(keys.insert(each.key).second) << each.key;
        EXPECT_STRNE(each.meaning, "") << each.key;
        std::int16_t PlayerState::*variable = nullptr;
        if (const auto* number = std::get_if<NumberSetting>(&each.value)) variable = number->variable;
        if (const auto* key = std::get_if<KeySetting>(&each.value)) variable = key->variable;
        if (variable == nullptr) continue;
        EXPECT_EQ(std::find(numbers.begin(), numbers.end(), variable), numbers.end()) << each.key;
        numbers.push_back(variable);
    }
    EXPECT_EQ(keys.size(), 37U);
    EXPECT_EQ(numbers.size(), 20U);
}

/// SET-66
TEST(SettingsSchema, TheManualTellsThem) {
    expectManualRows("settings", manualOf(settingsSchema()));
    expectManualRows("conveniences", conveniencesOf(settingsSchema()));
}

TEST_F(Settings, EachWriterWritesItsOwnInTheirOrder) {
    EXPECT_TRUE(writeSettings(player, WrittenBy::SettingsDialog, {{kDelayKey, "0700"}}));
    EXPECT_EQ(machine.files.bytes("/app/KADO.INI"),
              "[KADO]\r\nPOWER_Click=P\r\nMIN_Click=M\r\nREPEAT_Click=R\r\nSHUFFLE_Click=S\r\nPLAY_Click=z\r\n"
              "PAUSE_Click=x\r\nSTOP_Click=c\r\nPREV_Click=,\r\nNEXT_Click=.\r\nVOLUME_Up=u\r\nVOLUME_Down=d\r\n"
              "IMAGEHIDE=ON\r\nAUTOPLAY=OFF\r\nQUICK=OFF\r\nDELAYTIME=0700\r\nBITMAPFILE=DEFAULT.BMP\r\n"
              "TEXTFILE=DEFAULT.CSV\r\nWINDOWPOS=0\r\n");
    machine.files.remove("/app/KADO.INI");
    EXPECT_TRUE(writeSettings(player, WrittenBy::Editor));
    EXPECT_EQ(machine.files.bytes("/app/KADO.INI"),
              "[KADO]\r\nPATTERN=0\r\nMOVIEZOOM=0\r\nIMAGEZOOM=0\r\nINTERVAL=0\r\nFILENUM=0\r\nPAGENUM=0\r\n");
}

/// SET-66: A setting is a row of one schema, by which it is read, bounded, written and told in the manual
TEST_F(Settings, OneMoreRowIsReadWrittenBoundedAndTold) {
    SettingsSchema schema = settingsSchema();
    schema.push_back(
        {"FADE", NumberSetting{&PlayerState::gAnimationStep, 2, 20}, WrittenBy::Editor, "steps of a fade"});
    schema.push_back({"LOOP", SwitchSetting{&PlayerState::gRepeat}, WrittenBy::Editor, "begins again"});
    const auto readThem = [&](const std::string& lines) {
        settings(lines);
        readSettings(player, schema);
    };
    readThem("FADE=7\nLOOP=ON\n");
    EXPECT_EQ(player.gAnimationStep, 7);
    EXPECT_TRUE(player.gRepeat);
    for (const char* out : {"1", "21", "x", ""}) {
        readThem("FADE=" + std::string(out) + "\n");
        EXPECT_EQ(player.gAnimationStep, 7) << out;
        EXPECT_FALSE(player.gRepeat) << "its default";
    }
    settings("");
    EXPECT_TRUE(writeSettings(player, WrittenBy::Editor, {}, schema));
    EXPECT_TRUE(machine.files.bytes("/app/KADO.INI").ends_with("PAGENUM=0\r\nFADE=7\r\nLOOP=OFF\r\n"));
    EXPECT_NE(manualOf(schema).find("<td>FADE</td><td>2 to 20</td><td>0</td><td>steps of a fade</td><td>editor</td>"),
              std::string::npos);
    EXPECT_NE(manualOf(schema).find("<td>LOOP</td><td>ON, OFF</td><td>OFF</td><td>begins again</td>"),
              std::string::npos);
}

}  // namespace
}  // namespace corvane
