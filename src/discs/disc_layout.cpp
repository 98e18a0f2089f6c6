// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "discs/cue_sheet.h"

namespace corvane {

namespace {

/// Lays the stretches of a sheet's files one behind the other.
class Layout {
public:
    explicit Layout(const std::vector<std::int64_t>& lengths) : lengths_(lengths) {}

    void silence(std::int64_t sectors) { add(kNoFile, 0, sectors, kCdBytesPerSector); }

    /// The next so many sectors of a file, as far as it has them.
    void take(const CueSheet& sheet, std::size_t file, std::int64_t sectors, int sectorBytes) {
        if (file != file_) {
            file_ = file;
            used_ = 0;
        }
        const std::int64_t unit = sheet.files[file].kind == CueFile::Kind::Sound ? 1 : sectorBytes;
        const std::int64_t held = std::max<std::int64_t>(lengths_[file] - used_, 0) / unit;
        const std::int64_t count = std::min(sectors, held);
        add(file, used_, count, sectorBytes);
        used_ += count * unit;
    }
    /// The rest of the file that was taken from last.
    void takeRest(const CueSheet& sheet, int sectorBytes) { take(sheet, file_, kMostDiscSectors + 1, sectorBytes); }

    void begin(const CueTrack& track) { done_.tracks.push_back({track.number, end_, 0, track.audio}); }
    bool fits() const { return end_ <= kMostDiscSectors; }

    DiscLayout finish() {
        for (std::size_t i = 0; i < done_.tracks.size(); ++i) {
            CdTrack& track = done_.tracks[i];
            track.length = (i + 1 < done_.tracks.size() ? done_.tracks[i + 1].start : end_) - track.start;
        }
        return std::move(done_);
    }

private:
    void add(std::size_t file, std::int64_t from, std::int64_t count, int sectorBytes) {
        if (count <= 0) return;
        done_.pieces.push_back({end_, count, file, from, sectorBytes});
        end_ += count;
    }

    const std::vector<std::int64_t>& lengths_;
    DiscLayout done_;
    std::size_t file_ = kNoFile;
    std::int64_t used_ = 0;  ///< of that file
    std::int64_t end_ = 0;   ///< of the disc as far as it is laid out
};

struct Mark {
    const CueTrack* track;
    const CueIndex* index;
    bool firstOfTrack;
};

std::vector<Mark> marksOf(const CueSheet& sheet) {
    std::vector<Mark> marks;
    for (const CueTrack& track : sheet.tracks) {
        for (const CueIndex& index : track.indexes) marks.push_back({&track, &index, &index == &track.indexes.front()});
    }
    return marks;
}

}  // namespace

std::optional<DiscLayout> layOut(const CueSheet& sheet, const std::vector<std::int64_t>& lengths) {
    Layout layout(lengths);
    const std::vector<Mark> marks = marksOf(sheet);
    std::int64_t postgap = 0;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const CueTrack& track = *marks[i].track;
        const CueIndex& index = *marks[i].index;
        const bool firstOfFile = i == 0 || marks[i - 1].index->file != index.file;
        // What lies before a file's first index belongs to no track of its own, but it is on the disc.
        if (firstOfFile) layout.take(sheet, index.file, index.sector, track.sectorBytes);
        if (marks[i].firstOfTrack) {
            layout.silence(postgap + track.pregap);
            postgap = track.postgap;
        }
        if (index.number == 1) layout.begin(track);
        const bool goesOn = i + 1 < marks.size() && marks[i + 1].index->file == index.file;
        if (goesOn) {
            layout.take(sheet, index.file, marks[i + 1].index->sector - index.sector, track.sectorBytes);
        } else {
            layout.takeRest(sheet, track.sectorBytes);
        }
        if (!layout.fits()) return std::nullopt;
    }
    layout.silence(postgap);
    if (!layout.fits()) return std::nullopt;
    return layout.finish();
}

const DiscPiece* pieceAt(const DiscLayout& layout, std::int64_t sector) {
    const auto after =
        std::upper_bound(layout.pieces.begin(), layout.pieces.end(), sector,
                         [](std::int64_t wanted, const DiscPiece& piece) { return wanted < piece.start; });
    if (after == layout.pieces.begin()) return nullptr;
    const DiscPiece& piece = *(after - 1);
    return sector < piece.start + piece.length ? &piece : nullptr;
}

}  // namespace corvane
