// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "engine/mdlPublicFunction.h"
#include "fake/fake_machine.h"
#include "fuzz.h"
#include "linux/command_line.h"
#include "storage/play_lists.h"

namespace corvane {
namespace {

using fuzz::require;

void checkLine(const std::vector<std::string>& arguments, const CommandLine& line) {
    const auto open = std::find(arguments.begin(), arguments.end(), "--open");
    const auto behind = open == arguments.end() ? 0 : arguments.end() - open - 1;
    require(line.files.size() == static_cast<std::size_t>(behind), "each argument behind --open is one file");
    for (const std::string& file : line.files) require(file.empty() || file.front() == '/', "a file has a full path");
    std::size_t most = 0;
    for (const std::string& argument : arguments) most += argument.size() + 1;
    require(line.names.size() <= most, "names are no longer than they were");
}

void checkList(const CommandLine& line) {
    FakeMachine machine;
    Ports ports = machine.ports();
    Player player(ports);
    player.gListFileStem = "/app/FILE";
    for (const char* path : {"/a.wav", "/m/b.mp3", "c.mid", "/home/a b.jpg", "/home/user/a.wav"})
        machine.files.add(path);
    machine.process.arguments = line.names;
    machine.process.opened = line.files;
    loadListAtStart(player);
    require(player.gFileCount >= 0 && player.gFileCount <= mdlDefinePublic::kMaxFiles, "at most 256 entries");
    for (std::size_t i = 0; i < static_cast<std::size_t>(player.gFileCount); ++i) {
        require(machine.files.lookUp(player.gFilePath[i]).has_value(), "what is taken is there");
        require(!player.gFileTitle[i].empty(), "what is taken has a title");
        require(player.types.knows(mdlPublicFunction::GetExtension(player.gFilePath[i])),
                "what is taken can be played");
    }
    require(player.gFileIndex == 0, "a new list begins at its first file");
}

}  // namespace
}  // namespace corvane

/// Arguments with NUL bytes between them.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    std::vector<std::string> arguments;
    while (!input.empty()) arguments.push_back(input.until('\0'));
    const CommandLine line = readCommandLine(arguments, "/home/user");
    checkLine(arguments, line);
    checkList(line);
    return 0;
}
