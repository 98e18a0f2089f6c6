// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "fuzz.h"
#include "program/instance_call.h"
#include "types/printable.h"

namespace corvane {
namespace {

using fuzz::require;

constexpr std::size_t kFew = 1'000, kMany = 700'000;  ///< bytes that a reader takes at most

/// What is read in pieces is what is read at once.
void checkCall(std::string_view said, std::size_t piece, std::size_t most) {
    CallReader whole(most), inPieces(most);
    const bool taken = whole.take(said);
    require(taken == (said.size() <= most), "only what is too long is refused");
    if (!taken) {
        while (!said.empty() && inPieces.take(said.substr(0, piece))) said.remove_prefix(std::min(piece, said.size()));
        return require(whole.files().empty() && inPieces.files().empty(), "nothing of what is too long counts");
    }
    while (!said.empty()) {
        require(inPieces.take(said.substr(0, piece)), "the parts are no longer than the whole");
        said.remove_prefix(std::min(piece, said.size()));
    }
    const std::vector<std::string> files = whole.files();
    require(files == inPieces.files(), "pieces make no difference");
    for (const std::string& file : files)
        require(!file.empty() && file.find('\0') == std::string::npos, "a path is a text");
    CallReader again(most);
    require(again.take(callOf(files)) && again.files() == files, "what is said is what is heard");
}

void checkPrintable(std::string_view text) {
    const std::string shown = printable(text);
    for (const char c : shown) require(static_cast<unsigned char>(c) >= 0x20 && c != 0x7F, "nothing steers a terminal");
    require(printable(shown) == shown, "what may be shown stays");
    require(shown.size() <= text.size(), "nothing is added");
}

}  // namespace
}  // namespace corvane

/// The first byte is the size of the pieces in which the rest comes; an odd one also takes many bytes.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    const std::size_t piece = input.byte() + std::size_t{1};
    checkCall(input.rest(), piece, piece % 2 == 0 ? kMany : kFew);
    checkPrintable(input.rest());
    return 0;
}
