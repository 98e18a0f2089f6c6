// SPDX-License-Identifier: GPL-3.0-or-later
// Tags as files have them: their bytes as texts, what they say of loudness and ends, and a whole file that is read for
// them.
#include <cmath>

#include "fuzz.h"
#include "media/tags/file_tags.h"
#include "memory_file.h"
#include "types/characters.h"
#include "types/coder_ends.h"
#include "types/loudness.h"
#include "types/tag_text.h"
#include "types/tags/tag_reader.h"
#include "types/text.h"
#include "types/text_encoding.h"

namespace corvane {
namespace {

using fuzz::require;

void checkText(std::string_view raw) {
    const std::string shown = tagText(raw);
    require(text::isUtf8(shown), "what is shown is UTF-8");
    std::size_t count = 0;
    for (std::string_view left = shown; !left.empty(); ++count) {
        const text::Character next = text::firstCharacter(left);
        require(!text::isControl(next.code) && !text::turnsAround(next.code), "and harmless");
        left.remove_prefix(next.bytes);
    }
    require(count <= 2 * kMostTagCharacters + 1, "of a bounded length");  // blanks between them do not count
}

void checkLoudness(std::string_view all) {
    LoudnessTags tags;
    while (!all.empty()) {
        const std::string_view line = text::takeLine(all);
        const std::size_t mark = line.find('=');
        if (mark == std::string_view::npos) continue;
        takeLoudnessTag(tags, line.substr(0, mark), line.substr(mark + 1));
        if (const auto ends = coderEndsOf("iTunSMPB", line.substr(mark + 1)))
            require(ends->before >= 0 && ends->behind >= 0 && ends->samples > 0, "ends that there can be");
    }
    for (const bool ofAlbum : {false, true}) {
        const float factor = loudnessFactor(tags, ofAlbum);
        require(std::isfinite(factor) && factor > 0, "a factor that there can be");
        const auto& peak = (ofAlbum ? tags.album : tags.track).peak;
        require(factor <= 1 || peak || (ofAlbum ? tags.track : tags.album).peak, "louder by a stated peak alone");
    }
}

/// The readers that the other desktop has.
void checkReaders(std::string_view file) {
    const auto read = [file](std::uint64_t from, std::size_t count) {
        require(count <= kMostTagBytesRead, "no more is read at once than a tag may have");
        return from < file.size() ? std::string(file.substr(static_cast<std::size_t>(from), count)) : std::string();
    };
    readTags({read, file.size()}, [](std::string_view name, std::string_view value) {
        require(!value.empty() && value.size() <= 2 * kMostTagBytesRead && name.size() <= 2 * kMostTagBytesRead,
                "tags in bounds");
        if (value.size() < 4096) checkText(value);
        require(trackNumberOf(value) >= 0, "numbers in bounds");
    });
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    corvane::checkText(bytes);
    corvane::checkLoudness(bytes);
    corvane::checkReaders(bytes);
    const corvane::fuzz::MemoryFile file(data, size);
    const std::atomic<bool> never{false};
    const corvane::FileTags tags = corvane::readFileTags(file.path(), never);
    corvane::fuzz::require(tags.track >= 0 && tags.cover.size() <= corvane::kMostCoverBytes,
                           "numbers and covers in bounds");
    for (const std::string& text : {tags.title, tags.artist, tags.album}) {
        corvane::fuzz::require(text.size() <= corvane::kMostTagBytes, "texts in bounds");
        corvane::checkText(text);
    }
    return 0;
}
