// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace corvane {

/// What stands at a path, looked at without following it.
struct Link {
    enum class Kind {
        None,      ///< no link, or nothing at all
        Absolute,  ///< target: by the system's own names, such as \??\C:\music
        Relative,  ///< target: from the folder that the link lies in, or from its drive's root
        Unknown,   ///< a link that cannot be read, or of a kind that is not known
    };
    Kind kind = Kind::None;
    std::wstring target;
};

/// The link that a reparse point's bytes (REPARSE_DATA_BUFFER) describe.
Link linkIn(std::string_view bytes);

/// Asks the system. The folders above the path may lead elsewhere: those are looked at first.
Link lookAtLink(const std::wstring& path);

/// Where a path leads.
struct Lead {
    bool out = false;       ///< to what is no plain name (plain_file.h), or to no end
    std::wstring farDrive;  ///< the drive across the network that it comes to, where that was not to be entered
};

enum class FarAway { NotEntered, Entered };

/// Follows links by reading them, folder by folder; the system, asked for the path itself, would follow one to another
/// machine and send the user's name and proof of password there. A path of links alone that are not there is plain.
/// away: whether folders of a drive across the network are looked at, which may take as long as it likes.
Lead leadOf(const std::wstring& path, FarAway away, const std::function<Link(const std::wstring&)>& look = &lookAtLink);

}  // namespace corvane
