// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/discs/cd_image.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <optional>
#include <utility>

#include "discs/cue_sheet.h"
#include "discs/sheet_files.h"
#include "drives/drive_calls.h"
#include "drives/drive_file.h"
#include "drives/plain_file.h"
#include "media/sound/file_sound.h"
#include "media/sound/resampled_sound.h"
#include "types/text.h"
#include "types/text_encoding.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

constexpr const char* kGivenUp = "It was given up.";
constexpr float kFullScale = 32768.0F;

std::string endingOf(const fs::path& path) { return text::lower(path.extension().string()); }

bool isThere(const std::string& path, DriveCalls::Wait wait) {
    return DriveCalls::all()
        .ask<bool>(path, wait,
                   [path] {
                       std::error_code failed;
                       return fs::is_regular_file(path, failed);
                   })
        .value_or(false);
}

/// The sheet of an image: the path itself, or the one beside a raw file.
std::string sheetOf(const std::string& path, DriveCalls::Wait wait) {
    if (endingOf(path) != ".bin") return path;
    const std::string lower = fs::path(path).replace_extension(".cue").string();
    const std::string upper = fs::path(path).replace_extension(".CUE").string();
    return !isThere(lower, wait) && isThere(upper, wait) ? upper : lower;
}

/// A file of the image from which sectors are read.
class Source {
public:
    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    virtual ~Source() = default;
    /// False: it cannot be read.
    virtual bool read(const DiscPiece& piece, std::int64_t sector, std::int16_t* samples) = 0;
};

class RawSource : public Source {
public:
    RawSource(PlainFile file, bool swapped) : file_(std::move(file)), swapped_(swapped) {}

    bool read(const DiscPiece& piece, std::int64_t sector, std::int16_t* samples) override {
        std::array<char, kCdBytesPerSector> bytes{};
        const std::int64_t at = piece.from + (sector - piece.start) * piece.sectorBytes;
        if (readAt(file_.descriptor, bytes.data(), bytes.size(), at) != kCdBytesPerSector) return false;
        for (std::size_t i = 0; i < bytes.size() / 2; ++i) {
            const auto first = static_cast<unsigned char>(bytes[2 * i]);
            const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
            samples[i] = static_cast<std::int16_t>(swapped_ ? first << 8 | second : second << 8 | first);
        }
        return true;
    }

private:
    PlainFile file_;
    bool swapped_;
};

class SoundSource : public Source {
public:
    explicit SoundSource(std::unique_ptr<SoundBackend> sound) : sound_(std::move(sound)) {}

    bool read(const DiscPiece& piece, std::int64_t sector, std::int16_t* samples) override {
        const std::int64_t frame = (piece.from + sector - piece.start) * kCdFramesPerSector;
        if (frame != at_) goTo(frame);
        const auto width = static_cast<std::size_t>(sound_->format().channels);
        buffer_.assign(width * kCdFramesPerSector, 0.0F);  // behind its end it is silent
        const std::size_t got = sound_->read(buffer_.data(), kCdFramesPerSector);
        at_ = frame + static_cast<std::int64_t>(got);
        for (std::size_t i = 0; i < std::size_t{kCdFramesPerSector}; ++i) {
            const float* const frameOf = buffer_.data() + i * width;
            samples[2 * i] = sample(frameOf[0]);
            samples[2 * i + 1] = sample(frameOf[width > 1 ? 1 : 0]);
        }
        return got > 0;
    }

private:
    static std::int16_t sample(float value) {
        const float held = std::clamp(value * kFullScale, -kFullScale, kFullScale - 1);
        return std::isnan(held) ? std::int16_t{0} : static_cast<std::int16_t>(std::lround(held));
    }
    void goTo(std::int64_t frame) {
        if (!measured_) sound_->measure();
        measured_ = true;
        sound_->seek(frame);
    }

    std::unique_ptr<SoundBackend> sound_;
    bool measured_ = false;
    std::int64_t at_ = 0;
    std::vector<float> buffer_;
};

/// Opens what the sheet names; at most one file is kept open.
class ImageDisc : public CdDisc {
public:
    ImageDisc(CueSheet sheet, std::string folder, Abandoned flag)
        : sheet_(std::move(sheet)), folder_(std::move(folder)), flag_(std::move(flag)) {}

    /// The reason why it cannot be used, in words; empty when it can.
    std::string layOutFiles() {
        std::vector<std::int64_t> lengths;
        for (std::size_t file = 0; file < sheet_.files.size(); ++file) {
            std::string reason;
            lengths.push_back(lengthOf(file, reason));
            if (*flag_) return kGivenUp;
            if (!reason.empty()) return text::onOneLine(sheet_.files[file].name) + ": " + reason;
        }
        auto layout = layOut(sheet_, lengths);
        if (!layout) return "The disc is longer than a disc can be.";
        layout_ = std::move(*layout);
        if (layout_.pieces.empty()) return "There is nothing on the disc.";
        tracks_ = layout_.tracks;
        return {};
    }

    bool readSector(std::int64_t sector, std::int16_t* samples) override {
        const DiscPiece* const piece = pieceAt(layout_, sector);
        if (piece == nullptr) return false;
        if (piece->file == kNoFile) {
            std::fill_n(samples, kCdFramesPerSector * 2, std::int16_t{0});
            return true;
        }
        if (piece->sectorBytes < kCdBytesPerSector) return false;  // data
        std::string reason;
        if (piece->file != open_ && !open(piece->file, reason)) return false;
        return source_->read(*piece, sector, samples);
    }

private:
    std::string pathOf(std::size_t file) const { return (fs::path(folder_) / sheet_.files[file].name).string(); }
    bool isSound(std::size_t file) const { return sheet_.files[file].kind == CueFile::Kind::Sound; }

    /// A sound that can be a part of a disc; empty with the reason why not.
    std::unique_ptr<SoundBackend> openSound(std::size_t file, std::string& reason) const {
        OpenedSound opened = FileSound::open(pathOf(file), flag_);
        reason = opened.reason;
        if (!opened.sound || opened.sound->format().rate == kCdSampleRate) return std::move(opened.sound);
        return std::make_unique<ResampledSound>(std::move(opened.sound), kCdSampleRate, flag_);
    }

    std::optional<PlainFile> openRaw(std::size_t file, std::string& reason) const {
        using Opened = std::shared_ptr<PlainFile>;
        const std::string path = pathOf(file);
        const auto opened = DriveCalls::all().ask<Opened>(path, {DriveCalls::kLongPatience, flag_.get()}, [path] {
            return std::make_shared<PlainFile>(openPlainFile(path));
        });
        reason = opened ? (*opened)->reason : DriveCalls::kNoAnswer;
        if (!reason.empty()) return std::nullopt;
        return std::move(**opened);
    }

    std::int64_t lengthOf(std::size_t file, std::string& reason) const {
        if (!isSound(file)) {
            const auto raw = openRaw(file, reason);
            return raw ? raw->size : 0;
        }
        const auto sound = openSound(file, reason);
        if (!sound) return 0;
        if (!sound->lengthKnown()) sound->measure();
        return (sound->frames() + kCdFramesPerSector - 1) / kCdFramesPerSector;
    }

    bool open(std::size_t file, std::string& reason) {
        source_.reset();
        open_ = kNoFile;
        if (isSound(file)) {
            if (auto sound = openSound(file, reason)) source_ = std::make_unique<SoundSource>(std::move(sound));
        } else if (auto raw = openRaw(file, reason)) {
            const bool swapped = sheet_.files[file].kind == CueFile::Kind::RawSwapped;
            source_ = std::make_unique<RawSource>(std::move(*raw), swapped);
        }
        if (source_) open_ = file;
        return source_ != nullptr;
    }

    CueSheet sheet_;
    std::string folder_;
    Abandoned flag_;
    DiscLayout layout_;
    std::unique_ptr<Source> source_;
    std::size_t open_ = kNoFile;  ///< which file the source is
};

struct Sheet {
    std::optional<CueSheet> sheet;
    std::string reason, folder;
    std::string name;  ///< its own
};

/// Names of those of its files that are there.
std::vector<std::string> filesThere(const Sheet& read, DriveCalls::Wait wait) {
    std::vector<std::string> there;
    for (const CueFile& file : read.sheet->files) {
        if (isThere((fs::path(read.folder) / file.name).string(), wait)) there.push_back(file.name);
    }
    return there;
}

bool hasFiles(const Sheet& read, DriveCalls::Wait wait) {
    return filesThere(read, wait).size() == read.sheet->files.size();
}

/// The files of a folder, up to a bound.
std::vector<std::string> filesIn(const std::string& folder, DriveCalls::Wait wait) {
    const auto look = [folder] {
        std::vector<std::string> names;
        std::error_code failed;
        std::size_t looked = 0;
        for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
            if (++looked > kMostNamesBeside) break;
            std::error_code none;
            if (entry->is_regular_file(none)) names.push_back(entry->path().filename().string());
        }
        return names;
    };
    return DriveCalls::all().ask<std::vector<std::string>>(folder, wait, look).value_or(std::vector<std::string>());
}

/// Whether all files of the sheet are there, others in the place of those that are not.
bool findFiles(Sheet& read, DriveCalls::Wait wait) {
    std::vector<std::string> names = filesThere(read, wait);
    if (names.size() == read.sheet->files.size()) return true;
    std::vector<std::string> others = filesIn(read.folder, wait);
    std::move(others.begin(), others.end(), std::back_inserter(names));
    standInForMissing(*read.sheet, read.name, names);
    return hasFiles(read, wait);
}

Sheet readSheet(const std::string& path, DriveCalls::Wait wait) {
    const std::string place = sheetOf(path, wait);
    Sheet read;
    read.folder = fs::path(place).parent_path().string();
    read.name = fs::path(place).filename().string();
    const auto file = DriveFile::open(place, wait, read.reason);
    if (!file) return read;
    const auto text = file->readWhole(kMostCueBytes);
    if (!text) {
        read.reason = file->failure().empty() ? "The sheet of the disc is too long." : file->failure();
        return read;
    }
    const auto as = [&read](ReadCueSheet sheet) {
        return Sheet{std::move(sheet.sheet), std::move(sheet.reason), read.folder, read.name};
    };
    read = as(readCueSheet(text::toUtf8(*text)));
    if (!read.sheet || text::isUtf8(*text) || hasFiles(read, wait)) return read;
    // Files are named by the sheet's own bytes where a system took them as they came.
    Sheet raw = as(readCueSheet(*text));
    Sheet other = read;
    return (raw.sheet && hasFiles(raw, wait)) || !findFiles(other, wait) ? raw : read;
}

bool hasAudio(const CueSheet& sheet) {
    return std::any_of(sheet.tracks.begin(), sheet.tracks.end(), [](const CueTrack& track) { return track.audio; });
}

}  // namespace

bool isDiscImage(const std::string& path) {
    const std::string ending = endingOf(path);
    return ending == ".cue" || ending == ".bin";
}

OpenedDisc openImage(const std::string& path, const Abandoned& flag) {
    Sheet read = readSheet(path, {DriveCalls::kLongPatience, flag.get()});
    if (!read.sheet) return {nullptr, read.reason};
    findFiles(read, {DriveCalls::kLongPatience, flag.get()});
    if (!hasAudio(*read.sheet)) return {nullptr, "There is no audio disc at " + text::onOneLine(path)};
    auto disc = std::make_unique<ImageDisc>(std::move(*read.sheet), read.folder, flag);
    if (std::string reason = disc->layOutFiles(); !reason.empty()) return {nullptr, std::move(reason)};
    return {std::move(disc), ""};
}

std::vector<int> audioTracksOfImage(const std::string& path) {
    std::vector<int> tracks;
    Sheet read = readSheet(path, DriveCalls::kLongPatience);
    if (!read.sheet || !findFiles(read, DriveCalls::kLongPatience)) return tracks;
    for (const CueTrack& track : read.sheet->tracks) {
        if (track.audio) tracks.push_back(track.number);
    }
    return tracks;
}

TrackTexts textsOfImage(const std::string& path, int track) {
    const Sheet read = readSheet(path, DriveCalls::kPatience);
    if (!read.sheet) return {};
    const auto& tracks = read.sheet->tracks;
    const auto found =
        std::find_if(tracks.begin(), tracks.end(), [&](const CueTrack& one) { return one.number == track; });
    if (found == tracks.end()) return {};
    return {found->title, found->performer.empty() ? read.sheet->performer : found->performer, read.sheet->title};
}

}  // namespace corvane
