// SPDX-License-Identifier: GPL-3.0-or-later
// Writes what bash, zsh and fish complete behind corvane and corvane-skin, of the lists that their help is made of:
// write_completion FOLDER. Run by the build, never installed. Ends with 1 when a file cannot be written.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "program/command_line.h"
#include "skintool/skin_words.h"

namespace {

using namespace corvane;
using Options = std::vector<ProgramOption>;

struct Program {
    std::string name;
    Options commands;  ///< of which one is the first argument; none: files
    Options options;
};

/// Each of these letters with that before it.
std::string escaped(const std::string& text, const std::string& letters, const std::string& with) {
    std::string made;
    for (const char each : text) {
        if (letters.find(each) != std::string::npos) made += with;
        made += each;
    }
    return made;
}

/// As one word of bash or zsh.
std::string oneWord(const std::string& text) {
    std::string made = "'";
    for (const char each : text) made += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return made + "'";
}

bool takesTheRest(const ProgramOption& option) {
    return option.value.size() > 3 && option.value.compare(option.value.size() - 3, 3, "...") == 0;
}

std::string words(const Options& options) {
    std::string all;
    for (const ProgramOption& option : options) {
        for (const std::string& word : {option.word, option.letter}) {
            if (!word.empty()) all += (all.empty() ? "" : " ") + word;
        }
    }
    return all;
}

std::string forBash(const Program& program) {
    std::string name = "_" + program.name;
    for (char& each : name) each = each == '-' ? '_' : each;
    std::string rest, valued;
    for (const ProgramOption& option : program.options) {
        if (takesTheRest(option))
            rest += "    [[ ${COMP_WORDS[i]} == " + option.word + " ]] && return\n";
        else if (!option.value.empty())
            valued +=
                "  [[ ${COMP_WORDS[COMP_CWORD - 1]} == " + option.word + " ]] && { compopt +o default; return; }\n";
    }
    std::string text = name + "() {\n  local word=${COMP_WORDS[COMP_CWORD]} i\n  COMPREPLY=()\n";
    if (!rest.empty()) text += "  for ((i = 1; i < COMP_CWORD; i++)); do  # files alone\n" + rest + "  done\n";
    text += valued + "  if [[ $word == -* ]]; then\n    mapfile -t COMPREPLY < <(compgen -W " +
            oneWord(words(program.options)) + " -- \"$word\")\n";
    if (!program.commands.empty()) {
        text += "  elif ((COMP_CWORD == 1)); then\n    compopt +o default\n    mapfile -t COMPREPLY < <(compgen -W " +
                oneWord(words(program.commands)) + " -- \"$word\")\n";
    }
    return text + "  fi\n}\ncomplete -o default -F " + name + " " + program.name + "\n";
}

std::string forZsh(const Program& program) {
    const auto told = [](const ProgramOption& option) { return escaped(inShort(option), "[]:\\", "\\"); };
    std::string text = "#compdef " + program.name + "\n_arguments";
    for (const ProgramOption& option : program.options) {
        std::string spec = '[' + told(option) + ']';
        if (takesTheRest(option))
            spec += ":*:file:_files";
        else if (!option.value.empty())
            spec += ':' + option.value + ": ";
        const std::string both = "(" + option.letter + " " + option.word + ")";
        text += " \\\n  ";
        text += option.letter.empty() ? oneWord(option.word + spec)
                                      : oneWord(both) + "{" + option.letter + "," + option.word + "}" + oneWord(spec);
    }
    if (!program.commands.empty()) {
        std::string all;
        for (const ProgramOption& command : program.commands)
            all += (all.empty() ? "" : " ") + command.word + "\\:" + escaped(told(command), " ;\"()", "\\");
        text += " \\\n  " + oneWord("1:command:((" + all + "))");
    }
    return text + " \\\n  '*:file:_files'\n";
}

std::string forFish(const Program& program) {
    const auto told = [](const ProgramOption& option) { return "'" + escaped(inShort(option), "'\\", "\\") + "'\n"; };
    std::string text;
    for (const ProgramOption& command : program.commands)
        text +=
            "complete -c " + program.name + " -n __fish_use_subcommand -f -a " + command.word + " -d " + told(command);
    std::string before;  // that which leaves files alone behind it
    for (const ProgramOption& option : program.options)
        if (takesTheRest(option)) before += " -n 'not __fish_contains_opt " + option.word.substr(2) + "'";
    for (const ProgramOption& option : program.options) {
        text += "complete -c " + program.name + before;
        if (!option.letter.empty()) text += " -s " + option.letter.substr(1);
        text += " -l " + option.word.substr(2);
        if (!option.value.empty() && !takesTheRest(option)) text += " -x";
        text += " -d " + told(option);
    }
    return text;
}

bool write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    return static_cast<bool>(file << text << std::flush);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 1;
    const std::filesystem::path folder = argv[1];
    for (const Program& program :
         {Program{"corvane", {}, playerOptions()}, Program{"corvane-skin", skinCommands(), skinOptions()}}) {
        const std::string start = "# SPDX-License-Identifier: GPL-3.0-or-later\n# Made with " + program.name +
                                  ", of the list that its help is made of.\n";
        // The shell looks at the first line.
        std::string zsh = forZsh(program);
        zsh.insert(zsh.find('\n') + 1, start);
        if (!write(folder / (program.name + ".bash"), start + forBash(program)) ||
            !write(folder / ("_" + program.name), zsh) ||
            !write(folder / (program.name + ".fish"), start + forFish(program))) {
            std::fprintf(stderr, "write_completion: %s cannot be written\n", folder.c_str());
            return 1;
        }
    }
    return 0;
}
