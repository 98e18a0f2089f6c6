// SPDX-License-Identifier: GPL-3.0-or-later
#include "discs/cue_sheet.h"
#include "fuzz.h"

namespace corvane {
namespace {

using fuzz::require;

void checkSheet(const CueSheet& sheet) {
    require(!sheet.tracks.empty() && sheet.tracks.size() <= 99, "a disc has one to 99 tracks");
    require(!sheet.files.empty() && sheet.files.size() <= 99, "its tracks lie in files");
    for (const CueFile& file : sheet.files) {
        require(!file.name.empty() && file.name != "." && file.name != "..", "a file has a name of its own");
        require(file.name.find_first_of(std::string_view("/\\\0\r\n", 5)) == std::string::npos,
                "a file lies in the sheet's folder");
    }
    int number = 0;
    for (const CueTrack& track : sheet.tracks) {
        require(track.number > number && track.number <= 99, "tracks are numbered upward");
        number = track.number;
        bool begins = false;
        for (const CueIndex& index : track.indexes) {
            begins = begins || index.number == 1;
            require(index.file < sheet.files.size() && index.sector >= 0, "an index lies in a file");
        }
        require(begins, "a track begins");
    }
}

void checkLayout(const DiscLayout& layout, const CueSheet& sheet, const std::vector<std::int64_t>& lengths) {
    require(layout.tracks.size() == sheet.tracks.size(), "every track is laid out");
    std::int64_t end = 0;
    for (const DiscPiece& piece : layout.pieces) {
        require(piece.start == end && piece.length > 0, "pieces follow each other");
        end += piece.length;
        if (piece.file == kNoFile) continue;
        const bool sound = sheet.files[piece.file].kind == CueFile::Kind::Sound;
        require(piece.from >= 0 && piece.from + piece.length * (sound ? 1 : piece.sectorBytes) <= lengths[piece.file],
                "a piece lies inside its file");
    }
    require(end <= kMostDiscSectors, "a disc ends");
    std::int64_t before = 0;
    for (const CdTrack& track : layout.tracks) {
        require(track.start >= before && track.length >= 0 && track.start + track.length <= end,
                "tracks follow each other on the disc");
        before = track.start;
        for (const std::int64_t sector : {track.start, track.start + track.length - 1}) {
            const DiscPiece* const piece = pieceAt(layout, sector);
            const bool there = sector >= 0 && sector < end;
            require((piece != nullptr) == there, "each sector lies in a piece");
            require(piece == nullptr || (sector >= piece->start && sector < piece->start + piece->length),
                    "the piece holds the sector");
        }
    }
    require(sectorOf(layout.tracks, tmsfOf(layout.tracks, before)) >= 0, "a position is on the disc");
}

}  // namespace
}  // namespace corvane

/// The last bytes say how long the files are, as far as there are some behind a NUL.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    const std::string text = input.until('\0');
    const ReadCueSheet read = readCueSheet(text);
    fuzz::require(read.sheet.has_value() == read.reason.empty(), "a sheet, or the reason why there is none");
    if (!read.sheet) return 0;
    checkSheet(*read.sheet);
    std::vector<std::int64_t> lengths;
    for (std::size_t file = 0; file < read.sheet->files.size(); ++file) {
        const std::int64_t given = input.number();
        lengths.push_back(input.empty() && given == 0 ? 100'000 : given < 0 ? INT64_MAX + given + 1 : given);
    }
    if (const auto layout = layOut(*read.sheet, lengths)) checkLayout(*layout, *read.sheet, lengths);
    return 0;
}
