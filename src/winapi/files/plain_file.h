// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "winapi/handle.h"

namespace corvane {

/// Whether a name leads to a drive of this machine, or to a share that the program itself or its folder lies on. Pipes,
/// devices and shares of other machines are no places for files here: a list of somebody else's could name them, and
/// asking for one already sends the user's name and proof of password out. Nothing is opened to find it out.
bool isPlainName(const std::wstring& path);

/// Whether a path leads to such a place in the end, links in it read as they stand. Asks the drive about each folder on
/// the way: where it is across the network, only where waiting is allowed. What is not there is plain.
bool isPlainPath(const std::wstring& path);

/// "\\machine\share" in upper case; "" where a name lies on none.
std::wstring shareOf(std::wstring path);

/// What the drive itself calls a file or a folder, in the long form and links followed; "" where it cannot be opened.
/// For places of the program's own: a share that they lead to is asked.
std::wstring nameOnDisk(const std::wstring& path);

/// Opens a file of a disk for reading; an empty handle: there is none, or it cannot be read. Anything else of that name
/// (a pipe, a console, a serial line) is closed again without being read, and cannot act as this user.
/// moreFlags: of CreateFile, such as how it is going to be read.
Handle openPlainFile(const std::wstring& path, DWORD moreFlags = 0);

}  // namespace corvane
