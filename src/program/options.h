// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// An option or a command of a program, in its one table: its row of the help is made of it, and what shells complete.
struct ProgramOption {
    std::string word;    ///< such as "--help"
    std::string letter;  ///< its short form, such as "-h"; "" for none
    std::string value;  ///< what follows it, in capitals; "" for nothing. With "..." at its end all that follows is its
    std::string text;   ///< what it does, without a full stop; its lines are those of the help
};

/// A row of a help: a name, and a text whose further lines stand below its first one. width: what names take at most.
std::string helpRow(const std::string& name, const std::string& text, std::size_t width);

/// The rows of all, as wide as `width` names.
std::string helpRows(const std::vector<ProgramOption>& options, std::size_t width);

/// What it does in a few words: its text as far as its first line or colon.
std::string inShort(const ProgramOption& option);

}  // namespace corvane
