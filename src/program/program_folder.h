// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/ports.h"

namespace corvane {

/// Name of the folder that holds the skins.
inline constexpr const char* kSkinFolder = "PANELSET";

/// The folders of the machine, as far as the choice of the program's asks for them. Paths are whole and written as the
/// system writes them, without a trailing separator unless they are a root.
class Folders {
public:
    virtual ~Folders() = default;
    virtual bool isFolder(const std::string& path) = 0;
    virtual bool isFile(const std::string& path) = 0;
    virtual bool canBeWritten(const std::string& folder) = 0;
    /// Makes it, with those above it; where that fails it is not there.
    virtual void make(const std::string& folder) = 0;
    /// The path whole, without "." and "..", as above.
    virtual std::string whole(const std::string& path) = 0;
};

/// What decides where the program keeps its files.
struct FolderChoice {
    std::string chosen;  ///< CORVANE_FOLDER; "" when not set
    std::string user;    ///< the user's own, made on its first use
    /// Where skins and manual were laid; the first is the folder that the program lies in.
    std::vector<std::string> shipped;
};

/// Where the program keeps its files, which skins it begins with, where its manual lies.
class ProgramFolder {
public:
    /// The folders and files outlive it.
    ProgramFolder(FolderChoice choice, Folders& folders, Files& files);

    /// The chosen one; else the program's own when the skins lie beside the program and it can be written; else the
    /// user's. Nothing is made.
    std::string named() const;
    /// The same, made ready: the user's is made on its first use and given the shipped skins, later those that are new,
    /// each once: what the user changed or deleted is left alone. Where it cannot be made, the folder with the shipped
    /// skins.
    std::string ready() const;
    /// Where its skins lie: in it, or, before its first use, where they come from; "" when nowhere.
    std::string skins() const;
    /// The first page of the manual; "" when there is none.
    std::string manual() const;

private:
    std::string within(const std::string& folder, const std::string& name) const;
    std::string given() const;
    std::string shippedSkins() const;

    FolderChoice choice_;
    Folders& folders_;
    Files& files_;
};

}  // namespace corvane
