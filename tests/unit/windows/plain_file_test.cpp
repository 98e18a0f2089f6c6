// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/files/plain_file.h"

#include <gtest/gtest.h>

#include "unit/windows/folder_rig.h"
#include "winapi/media_file.h"
#include "winapi/movies/filter_graph.h"
#include "winapi/pictures/windows_pictures.h"

namespace corvane {
namespace {

/// WIN-39: Pipes, devices and shares of other machines are no files, and are asked nothing
TEST(PlainNames, DrivesAndNothingElse) {
    for (const wchar_t* name : {L"C:\\music\\a.wav", L"z:/music/a.wav", L"C:a.wav", L"a.wav", L"\\music\\a.wav",
                                L"\\\\?\\C:\\music\\a.wav", L"PANELSET\\a.bmp"}) {
        EXPECT_TRUE(isPlainName(name)) << fromWide(name);
    }
    for (const wchar_t* name :
         {L"", L"\\\\host\\share\\a.wav", L"//host/share/a.wav", L"\\/host\\share\\a.wav",
          L"\\\\?\\UNC\\host\\share\\a.wav", L"\\\\.\\pipe\\a.wav", L"//./pipe/a.wav", L"\\\\.\\C:\\a.wav",
          L"\\\\?\\pipe\\a.wav", L"\\\\?\\GLOBALROOT\\Device\\Mup\\host\\share\\a.wav", L"\\\\?\\C:a.wav",
          L"\\??\\UNC\\host\\share\\a.wav", L"\\??\\C:\\a.wav", L"/?\?/pipe/a.wav", L"C:\\a.wav:b.wav", L"COM1:",
          L"a.wav:b", L"\\\\host", L"\\\\"}) {
        EXPECT_FALSE(isPlainName(name)) << fromWide(name);
    }
}

/// The system finds them in every folder.
/// WIN-39
TEST(PlainNames, DevicesAreNoFilesWhateverTheirEnding) {
    for (const wchar_t* name : {L"NUL", L"C:\\music\\nul", L"C:\\music\\NUL.wav", L"C:\\music\\con .mp3",
                                L"C:\\music\\Aux.tar.mid", L"C:PRN.jpg", L"C:/music/COM1.avi", L"C:\\lpt9.bmp",
                                L"C:\\COM\xB2.wav", L"C:\\aux\\a.wav", L"C:\\CONIN$", L"C:\\conout$.wav"}) {
        EXPECT_FALSE(isPlainName(name)) << fromWide(name);
    }
    for (const wchar_t* name : {L"C:\\music\\null.wav", L"C:\\Con Brio.mp3", L"C:\\com.mp3", L"C:\\COM10.wav",
                                L"C:\\a.nul", L"C:\\xCON.wav", L"C:\\LPTX.wav", L"\\\\?\\C:\\music\\con.wav"}) {
        EXPECT_TRUE(isPlainName(name)) << fromWide(name);
    }
}

/// A pipe that somebody keeps open and silent: reading it never returns.
struct SilentPipe {
    SilentPipe() {
        pipe = Handle(CreateNamedPipeW(toWide(name).c_str(), PIPE_ACCESS_OUTBOUND, PIPE_TYPE_BYTE | PIPE_NOWAIT, 4, 512,
                                       512, 0, nullptr));
    }
    bool asked() const { return ConnectNamedPipe(pipe.get(), nullptr) == 0 && GetLastError() == ERROR_PIPE_CONNECTED; }

    std::string name = "\\\\.\\pipe\\corvane-" + std::to_string(GetCurrentProcessId()) + ".wav";
    Handle pipe;
};

/// WIN-39
TEST(PlainFiles, APipeIsAskedNothing) {
    const SilentPipe pipe;
    ASSERT_TRUE(pipe.pipe);
    WindowsFiles files;
    WindowsPictures pictures([](const EventLoop::Handler& /*event*/) {});
    EXPECT_EQ(files.lookUp(pipe.name), std::nullopt);
    EXPECT_EQ(files.read(pipe.name, 100), std::nullopt);
    EXPECT_EQ(contentOfFile(toWide(pipe.name)), MediaContent::Missing);
    EXPECT_TRUE(pictures.decode(pipe.name).picture.empty());
    EXPECT_FALSE(FilterGraph::build(toWide(pipe.name)).graph);
    EXPECT_FALSE(pipe.asked());
    // The pipe would have taken them.
    const Handle other(CreateFileW(toWide(pipe.name).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(other);
    EXPECT_TRUE(pipe.asked());
}

/// WIN-39
TEST(PlainFiles, ADeviceIsNoFile) {
    const test::TriedFolder folder;
    test::writeFile(folder.in("a.wav"), "bytes");
    EXPECT_TRUE(openPlainFile(toWide(folder.in("a.wav"))));
    EXPECT_TRUE(Handle(
        CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr)))
        << "it is there";
    EXPECT_FALSE(openPlainFile(L"NUL"));
    EXPECT_FALSE(openPlainFile(toWide(folder.in("NUL"))));
    // Where a drive is a folder of another system, a device there has the name of a file.
    EXPECT_FALSE(openPlainFile(L"Z:\\dev\\zero"));
}

}  // namespace
}  // namespace corvane
