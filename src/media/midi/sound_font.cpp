// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/midi/sound_font.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "media/midi/fluid_library.h"
#include "media/midi/sound_font_limits.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr DriveCalls::Patience kPatience = DriveCalls::kPatience;  ///< of each look
constexpr std::size_t kHeadBytes = 12;
constexpr std::size_t kPiece = 32 * 1024;  ///< bytes read at a time: the library asks for a few
/// All of it is held in memory; the largest of the usual ones has some 150 MB, large collections a few hundred.
constexpr std::int64_t kMostBytes = std::int64_t{1} << 30;
constexpr std::size_t kMostInFolder = 1000;
/// Below what is no folder: should the library ever ask the system itself, no drive is touched.
constexpr const char* kNameBegin = "/dev/null/";

/// The open fonts by the name that the library is told: its calls bring nothing else. Never destroyed, because a worker
/// may use it while the program ends.
struct OpenFonts {
    std::mutex mutex;
    std::map<std::string, std::shared_ptr<DriveFile>> files;  ///< guarded by the mutex, like the next one
    std::uint64_t last = 0;

    static OpenFonts& all() {
        static auto* const fonts = new OpenFonts;
        return *fonts;
    }
};

/// A place in an open font; the library makes one for each thing that it reads.
struct Cursor {
    std::shared_ptr<DriveFile> file;
    std::int64_t at = 0;
    std::int64_t pieceAt = 0;
    std::string piece;

    static Cursor& of(void* handle) { return *static_cast<Cursor*>(handle); }

    bool fetch() {
        piece.resize(kPiece);
        pieceAt = at;
        const std::int64_t got = file->read(at, piece.data(), kPiece);
        piece.resize(static_cast<std::size_t>(std::max<std::int64_t>(got, 0)));
        return got > 0;
    }

    static void* open(const char* name) {
        OpenFonts& fonts = OpenFonts::all();
        const std::lock_guard lock(fonts.mutex);
        const auto found = fonts.files.find(name);
        return found == fonts.files.end() ? nullptr : new Cursor{found->second, 0, 0, {}};
    }
    static int read(void* to, fluid_long_long_t count, void* handle) {
        Cursor& cursor = of(handle);
        auto* bytes = static_cast<char*>(to);
        while (count > 0) {
            const std::int64_t offset = cursor.at - cursor.pieceAt;
            const auto held = static_cast<std::int64_t>(cursor.piece.size());
            if (offset < 0 || offset >= held) {
                if (!cursor.fetch()) return FLUID_FAILED;
                continue;
            }
            const std::int64_t part = std::min<std::int64_t>(count, held - offset);
            std::memcpy(bytes, cursor.piece.data() + offset, static_cast<std::size_t>(part));
            bytes += part;
            count -= part;
            cursor.at += part;
        }
        return FLUID_OK;
    }
    static int seek(void* handle, fluid_long_long_t offset, int origin) {
        Cursor& cursor = of(handle);
        const std::int64_t from = origin == SEEK_CUR ? cursor.at : origin == SEEK_END ? cursor.file->size() : 0;
        std::int64_t to = 0;
        if (__builtin_add_overflow(from, std::int64_t{offset}, &to) || to < 0) return FLUID_FAILED;
        cursor.at = to;
        return FLUID_OK;
    }
    static fluid_long_long_t tell(void* handle) { return of(handle).at; }
    static int close(void* handle) {
        delete static_cast<Cursor*>(handle);
        return FLUID_OK;
    }
};

/// The files of a folder, in order; empty when it does not answer.
std::vector<std::string> filesIn(const std::string& folder) {
    const auto listed = DriveCalls::all().ask<std::vector<std::string>>(folder, kPatience, [folder] {
        std::vector<std::string> files;
        std::error_code error;
        for (std::filesystem::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
            if (files.size() == kMostInFolder) break;
            files.push_back(at->path().string());
        }
        std::sort(files.begin(), files.end());
        return files;
    });
    return listed.value_or(std::vector<std::string>());
}

}  // namespace

SoundFont::SoundFont(std::string path, std::unique_ptr<DriveFile> file) : path_(std::move(path)) {
    OpenFonts& fonts = OpenFonts::all();
    const std::lock_guard lock(fonts.mutex);
    name_ = kNameBegin + std::to_string(++fonts.last);
    fonts.files[name_] = std::move(file);
}

SoundFont::~SoundFont() {
    OpenFonts& fonts = OpenFonts::all();
    const std::lock_guard lock(fonts.mutex);
    fonts.files.erase(name_);
}

std::unique_ptr<SoundFont> SoundFont::open(const std::string& path, std::string& reason) {
    std::unique_ptr<DriveFile> file = DriveFile::open(path, kPatience, reason);
    if (!file) return nullptr;
    if (file->size() > kMostBytes) {
        reason = "It is larger than 1 GiB.";
        return nullptr;
    }
    std::array<char, kHeadBytes> head{};
    const std::int64_t got = file->read(0, head.data(), head.size());
    const std::string_view bytes(head.data(), head.size());
    if (got == static_cast<std::int64_t>(kHeadBytes) && bytes.substr(0, 4) == "RIFF" && bytes.substr(8) == "sfbk")
        reason = tooMuchInSoundFont(*file);
    else
        reason = file->failure().empty() ? "It is not a soundfont." : file->failure();
    return reason.empty() ? std::unique_ptr<SoundFont>(new SoundFont(path, std::move(file))) : nullptr;
}

std::unique_ptr<SoundFont> SoundFont::find(std::string& reason) {
    if (const char* named = std::getenv("CORVANE_SOUNDFONT")) {
        std::unique_ptr<SoundFont> font = open(named, reason);
        if (!font) reason = "The sounds for MIDI cannot be read: " + text::onOneLine(named) + "\r\n" + reason;
        return font;
    }
    std::string why;
    for (const char* known : {"/usr/share/sounds/sf2/TimGM6mb.sf2", "/usr/share/sounds/sf2/default-GM.sf2",
                              "/usr/share/soundfonts/default.sf2", "/usr/share/sounds/sf3/default-GM.sf3"}) {
        if (std::unique_ptr<SoundFont> font = open(known, why)) return font;
    }
    std::vector<std::string> folders = {"/usr/share/sounds/sf2", "/usr/share/soundfonts", "/usr/share/sounds/sf3",
                                        "/usr/local/share/soundfonts"};
    if (const char* home = std::getenv("HOME")) folders.push_back(std::string(home) + "/.local/share/soundfonts");
    for (const std::string& folder : folders) {
        for (const std::string& file : filesIn(folder)) {
            if (std::unique_ptr<SoundFont> font = open(file, why)) return font;
        }
    }
    reason = "There are no sounds for MIDI: no soundfont was found.";
    return nullptr;
}

bool SoundFont::load(struct _fluid_hashtable_t* settings, struct _fluid_synth_t* synth) {
    fluid_sfloader_t* const loader = fluid().new_fluid_defsfloader(settings);
    if (loader == nullptr) return false;
    if (fluid().fluid_sfloader_set_callbacks(loader, Cursor::open, Cursor::read, Cursor::seek, Cursor::tell,
                                             Cursor::close) != FLUID_OK) {
        fluid().delete_fluid_sfloader(loader);
        return false;
    }
    fluid().fluid_synth_add_sfloader(synth, loader);  // which owns it now
    return fluid().fluid_synth_sfload(synth, name_.c_str(), 1) != FLUID_FAILED;
}

}  // namespace corvane
