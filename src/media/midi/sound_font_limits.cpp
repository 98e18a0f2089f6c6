// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/midi/sound_font_limits.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

namespace {

constexpr std::uint64_t kMostUnpacked = std::uint64_t{1} << 30;  ///< bytes, of all sounds
constexpr std::uint32_t kMostRecords = 4U << 20;  ///< bytes of one table; what has 16 bits to be named by fills less
constexpr std::uint64_t kMostInPreset = 16'384;   ///< sounds that one note looks at, layer by layer
constexpr std::uint64_t kMostInAll = 262'144;
constexpr std::size_t kChunkHead = 8;
constexpr std::int64_t kFormHead = 12;
constexpr std::size_t kPiece = 256 * 1024;

// A record's bytes, and where in it stands what is looked at.
constexpr std::size_t kPresetBytes = 38, kPresetBag = 24;
constexpr std::size_t kInstrumentBytes = 22, kInstrumentBag = 20;
constexpr std::size_t kBagBytes = 4, kGeneratorBytes = 4;
constexpr std::size_t kSampleBytes = 46, kSampleBegin = 20, kSampleEnd = 24, kSampleKind = 44;
constexpr unsigned kInstrumentGenerator = 41;
constexpr unsigned kPackedKind = 0x10;
constexpr std::uint64_t kBehindSample = 47;  ///< frames that the library keeps behind each sound, and the last one
constexpr std::uint64_t kFrameBytes = 3;     ///< of a sound that is not packed: 24 bits where there are two chunks

// Of a page of the packed kind.
constexpr std::string_view kPageMark = "OggS", kVorbisMark = "\x01vorbis";
constexpr std::size_t kGranule = 6, kPageHead = 14;
constexpr std::size_t kChannels = 11, kVorbisHead = 12;

constexpr const char* kDamaged = "It is not a whole soundfont.";
constexpr const char* kTooLarge = "Its sounds are larger than 1 GiB.";
constexpr const char* kTooMany = "It has too many sounds for one note.";

std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = count; i > 0; --i) value = value << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
    return value;
}

struct Chunk {
    std::string name;
    std::uint32_t size = 0;
    std::int64_t begin = 0;
    std::int64_t end() const { return begin + size; }
};

/// A sound that is loaded of its own; equal ones are loaded once.
struct Sound {
    std::uint64_t begin = 0, end = 0;  ///< frames, or bytes of what is packed
    bool packed = false;
    auto operator<=>(const Sound&) const = default;
};

class Look {
public:
    explicit Look(DriveFile& file) : file_(file) {}

    std::string why() {
        const bool whole = outline();
        if (!file_.failure().empty()) return file_.failure();
        if (!whole) return kDamaged;
        if (!fewEnough()) return kTooMany;
        if (!packed_) return "";  // all of it is one piece of the file
        return soundsFit() ? "" : file_.failure().empty() ? kTooLarge : file_.failure();
    }

private:
    std::optional<std::string> bytes(std::int64_t from, std::size_t count) {
        std::string read(count, '\0');
        std::size_t have = 0;
        while (have < count) {
            const std::int64_t got =
                file_.read(from + static_cast<std::int64_t>(have), read.data() + have, count - have);
            if (got <= 0) return std::nullopt;
            have += static_cast<std::size_t>(got);
        }
        return read;
    }

    std::optional<Chunk> chunkAt(std::int64_t at, std::int64_t end) {
        if (end - at < static_cast<std::int64_t>(kChunkHead)) return std::nullopt;
        const std::optional<std::string> head = bytes(at, kChunkHead);
        if (!head) return std::nullopt;
        Chunk chunk{head->substr(0, 4), static_cast<std::uint32_t>(number(*head, 4, 4)),
                    at + static_cast<std::int64_t>(kChunkHead)};
        if (chunk.end() > end) return std::nullopt;
        return chunk;
    }

    /// The list of this kind that begins there; its contents begin behind the kind's name.
    std::optional<Chunk> listAt(std::int64_t at, std::string_view kind) {
        std::optional<Chunk> list = chunkAt(at, file_.size());
        if (!list || list->name != "LIST" || list->size < 4) return std::nullopt;
        if (bytes(list->begin, 4) != kind) return std::nullopt;
        list->begin += 4;
        list->size -= 4;
        return list;
    }

    /// False: it is not built as every soundfont is.
    bool outline() {
        const std::optional<Chunk> info = listAt(kFormHead, "INFO");
        if (!info || !readVersion(*info)) return false;
        const std::optional<Chunk> sounds = listAt(info->end(), "sdta");
        if (!sounds) return false;
        if (sounds->size > 0) {
            const std::optional<Chunk> samples = chunkAt(sounds->begin, sounds->end());
            if (!samples || samples->name != "smpl") return false;
            samples_ = *samples;
        }
        const std::optional<Chunk> tables = listAt(sounds->end(), "pdta");
        return tables && readTables(*tables);
    }

    bool readVersion(const Chunk& info) {
        for (std::int64_t at = info.begin; at < info.end();) {
            const std::optional<Chunk> chunk = chunkAt(at, info.end());
            if (!chunk) return false;
            if (chunk->name == "ifil") {
                const std::optional<std::string> version = bytes(chunk->begin, 2);
                if (!version) return false;
                packed_ = packed_ || number(*version, 0, 2) != 2;
            }
            at = chunk->end();
        }
        return true;
    }

    bool readTables(const Chunk& tables) {
        const std::array<std::pair<const char*, std::string*>, 9> wanted = {{{"phdr", &presets_},
                                                                             {"pbag", &presetBags_},
                                                                             {"pmod", nullptr},
                                                                             {"pgen", &presetGenerators_},
                                                                             {"inst", &instruments_},
                                                                             {"ibag", nullptr},
                                                                             {"imod", nullptr},
                                                                             {"igen", nullptr},
                                                                             {"shdr", &sounds_}}};
        std::int64_t at = tables.begin;
        for (const auto& [name, kept] : wanted) {
            const std::optional<Chunk> chunk = chunkAt(at, tables.end());
            if (!chunk || chunk->name != name || chunk->size > kMostRecords) return false;
            if (kept != nullptr) {
                std::optional<std::string> read = bytes(chunk->begin, chunk->size);
                if (!read) return false;
                *kept = std::move(*read);
            }
            at = chunk->end();
        }
        return true;
    }

    /// How many layers each instrument has: the library goes through all of them for every layer of a preset.
    std::vector<std::uint64_t> layersOfInstruments() const {
        std::vector<std::uint64_t> layers;
        for (std::size_t at = kInstrumentBytes; at + kInstrumentBytes <= instruments_.size(); at += kInstrumentBytes) {
            const std::uint64_t begin = number(instruments_, at - kInstrumentBytes + kInstrumentBag, 2);
            const std::uint64_t end = number(instruments_, at + kInstrumentBag, 2);
            layers.push_back(end > begin ? end - begin : 0);
        }
        return layers;
    }

    bool fewEnough() const {
        const std::vector<std::uint64_t> layers = layersOfInstruments();
        const auto generatorOf = [&](std::size_t bag) {
            return (bag + 1) * kBagBytes <= presetBags_.size() ? number(presetBags_, bag * kBagBytes, 2) : 0;
        };
        std::uint64_t all = 0;
        for (std::size_t at = kPresetBytes; at + kPresetBytes <= presets_.size(); at += kPresetBytes) {
            const std::size_t first = generatorOf(number(presets_, at - kPresetBytes + kPresetBag, 2));
            const std::size_t last = generatorOf(number(presets_, at + kPresetBag, 2));
            std::uint64_t inPreset = 0;
            for (std::size_t i = first; i < last && (i + 1) * kGeneratorBytes <= presetGenerators_.size(); ++i) {
                const std::uint64_t instrument = number(presetGenerators_, i * kGeneratorBytes + 2, 2);
                if (number(presetGenerators_, i * kGeneratorBytes, 2) == kInstrumentGenerator &&
                    instrument < layers.size())
                    inPreset += layers[instrument];
            }
            all += inPreset;
            if (inPreset > kMostInPreset || all > kMostInAll) return false;
        }
        return true;
    }

    bool soundsFit() {
        std::uint64_t all = 0, packedEnd = 0;
        for (const Sound& sound : ownSounds()) {
            if (sound.packed) {
                // Those that lie in each other would be read again and again.
                if (sound.begin < packedEnd) return false;
                packedEnd = sound.end;
            }
            const std::optional<std::uint64_t> size =
                sound.packed ? unpacked(sound) : (sound.end - sound.begin + kBehindSample) * kFrameBytes;
            if (!size || *size > kMostUnpacked) return false;
            all += *size;
            if (all > kMostUnpacked) return false;
        }
        return true;
    }

    std::vector<Sound> ownSounds() const {
        std::vector<Sound> sounds;
        for (std::size_t at = 0; at + kSampleBytes <= sounds_.size(); at += kSampleBytes) {
            Sound sound{number(sounds_, at + kSampleBegin, 4), number(sounds_, at + kSampleEnd, 4),
                        (number(sounds_, at + kSampleKind, 2) & kPackedKind) != 0};
            sound.end = std::min<std::uint64_t>(sound.end, samples_.size);
            if (sound.begin < sound.end) sounds.push_back(sound);
        }
        std::sort(sounds.begin(), sounds.end());
        sounds.erase(std::unique(sounds.begin(), sounds.end()), sounds.end());
        return sounds;
    }

    /// What one sound takes: the latest frame that any of its pages names, in all channels. Whoever unpacks it stops
    /// there.
    std::optional<std::uint64_t> unpacked(const Sound& sound) {
        std::uint64_t frames = 0, channels = 1;
        const std::int64_t end = samples_.begin + static_cast<std::int64_t>(sound.end);
        std::int64_t at = samples_.begin + static_cast<std::int64_t>(sound.begin);
        while (at < end) {
            const auto count = static_cast<std::size_t>(std::min<std::int64_t>(kPiece, end - at));
            const std::optional<std::string> piece = bytes(at, count);
            if (!piece) return std::nullopt;
            for (std::size_t i = piece->find(kPageMark); i != std::string::npos && i + kPageHead <= count;
                 i = piece->find(kPageMark, i + 1)) {
                const std::uint64_t frame = number(*piece, i + kGranule, 8);
                if (frame <= kMostUnpacked)
                    frames = std::max(frames, frame);
                else if (frame >> 63 == 0)
                    return kMostUnpacked + 1;  // below zero: no sound ends on the page
            }
            for (std::size_t i = piece->find(kVorbisMark); i != std::string::npos && i + kVorbisHead <= count;
                 i = piece->find(kVorbisMark, i + 1))
                channels = std::max(channels, number(*piece, i + kChannels, 1));
            if (at + static_cast<std::int64_t>(count) == end) break;
            at += static_cast<std::int64_t>(count - kPageHead + 1);  // one may lie across the pieces
        }
        return frames * channels * sizeof(std::int16_t);
    }

    DriveFile& file_;
    bool packed_ = false;  ///< sounds are loaded each of its own, and may be packed
    Chunk samples_;
    std::string presets_, presetBags_, presetGenerators_, instruments_, sounds_;
};

}  // namespace

std::string tooMuchInSoundFont(DriveFile& file) { return Look(file).why(); }

}  // namespace corvane
