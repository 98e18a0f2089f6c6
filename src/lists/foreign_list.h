// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Play lists as other players write them. Anybody may have written one: each reader takes any bytes in any encoding,
/// well formed or not, cut off or not, and gives what names it finds, bounded.

enum class ListFormat {
    M3u,   ///< a name a line
    Pls,   ///< File1=, File2= …
    Xspf,  ///< tracks of XML
    Asx    ///< entries in tags that need not be XML
};

/// More of a list is not looked at.
inline constexpr std::size_t kMostForeignEntries = 20'000;
inline constexpr std::size_t kMostForeignBytes = std::size_t{8} * 1024 * 1024;

/// The format of the lists with that extension, in capitals; empty: none.
std::optional<ListFormat> listFormatOf(std::string_view extension);

/// What the shared database of types calls these lists, and sheets of discs.
std::vector<std::string> listMimeTypes();
std::vector<std::string> listExtensions();  ///< in capitals, without the dot

/// A list's names as they stand in it, at most kMostForeignEntries: paths, or addresses.
struct ForeignList {
    std::vector<std::string> locations;
    bool areAddresses =
        false;  ///< characters may be written as "%20"; else only in an address that begins with "file:"
};

/// Any thread; never fails. Of longer bytes the first kMostForeignBytes count.
ForeignList readForeignList(ListFormat format, std::string_view bytes);

}  // namespace corvane
