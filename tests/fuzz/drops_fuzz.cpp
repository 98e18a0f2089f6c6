// SPDX-License-Identifier: GPL-3.0-or-later
#include <QByteArray>

#include "engine/mdlPublicFunction.h"
#include "fake/fake_machine.h"
#include "fuzz.h"
#include "linux/windowing/input_map.h"

namespace corvane {
namespace {

using fuzz::require;

void checkTaking(const std::vector<std::string>& paths) {
    FakeMachine machine;
    Ports ports = machine.ports();
    Player player(ports);
    player.gFileIndex = 7;
    player.gStartPosition.fill(1);
    for (const std::string& path : paths) {
        if (path.find("//") == std::string::npos && path.back() != '/') machine.files.add(path);
    }
    const int taken = mdlPublicFunction::takeFiles(player, DropData{true, paths});
    require(taken == player.gFileCount && taken >= 0 && taken <= mdlDefinePublic::kMaxFiles, "at most 256 are taken");
    require(player.gFileIndex == 0 && player.gStartPosition[255] == 0, "the new list begins anew");
    for (std::size_t i = 0; i < static_cast<std::size_t>(taken); ++i) {
        require(machine.files.lookUp(player.gFilePath[i]).has_value(), "what is taken is there");
        require(player.types.knows(mdlPublicFunction::GetExtension(player.gFilePath[i])),
                "what is taken can be played");
    }
}

}  // namespace
}  // namespace corvane

/// A list of addresses as another program drops it.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    const QByteArray list(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const std::vector<std::string> paths = pathsOfUriList(list);
    require(paths.size() <= size, "no more paths than bytes");
    QByteArray again;
    for (const std::string& path : paths) {
        require(!path.empty() && path.front() == '/' && path.find('\0') == std::string::npos, "a path is a full path");
        again += "file://" + QByteArray::fromStdString(path).toPercentEncoding("/") + "\r\n";
    }
    require(pathsOfUriList(again) == paths, "an address written anew means the same file");
    checkTaking(paths);
    return 0;
}
