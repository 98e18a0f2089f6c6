// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/program_folder.h"

#include <utility>

#include "program/shipped_skins.h"

namespace corvane {

ProgramFolder::ProgramFolder(FolderChoice choice, Folders& folders, Files& files)
    : choice_(std::move(choice)), folders_(folders), files_(files) {}

std::string ProgramFolder::within(const std::string& folder, const std::string& name) const {
    const bool root = !folder.empty() && folder.back() == files_.separator();
    return root ? folder + name : folder + files_.separator() + name;
}

/// The chosen folder, or the program's own; "" when it is the user's.
std::string ProgramFolder::given() const {
    if (!choice_.chosen.empty()) return folders_.whole(choice_.chosen);
    const std::string& program = choice_.shipped.front();
    const bool skinsBeside = folders_.isFolder(within(program, kSkinFolder));
    return skinsBeside && folders_.canBeWritten(program) ? program : std::string();
}

/// The folder in which the shipped skins' folder lies; "" when there is none.
std::string ProgramFolder::shippedSkins() const {
    for (const std::string& each : choice_.shipped) {
        if (folders_.isFolder(within(each, kSkinFolder))) return each;
    }
    return {};
}

std::string ProgramFolder::named() const {
    const std::string folder = given();
    return folder.empty() ? choice_.user : folder;
}

std::string ProgramFolder::ready() const {
    if (std::string folder = given(); !folder.empty()) return folder;
    const std::string shipped = shippedSkins();
    const std::string own = within(choice_.user, kSkinFolder);
    folders_.make(shipped.empty() ? choice_.user : own);
    if (shipped.empty()) return choice_.user;
    // No place of the user's: it plays with the shipped skins, and nothing can be stored.
    if (!folders_.isFolder(own)) return shipped;
    giveSkins(files_, within(shipped, kSkinFolder), own);
    return choice_.user;
}

std::string ProgramFolder::skins() const {
    const std::string own = within(named(), kSkinFolder);
    if (!choice_.chosen.empty() || folders_.isFolder(own)) return own;
    const std::string shipped = shippedSkins();
    return shipped.empty() ? shipped : within(shipped, kSkinFolder);
}

std::string ProgramFolder::manual() const {
    for (const std::string& each : choice_.shipped) {
        const std::string page = within(within(each, "manual"), "index.html");
        if (folders_.isFile(page)) return page;
    }
    return {};
}

}  // namespace corvane
