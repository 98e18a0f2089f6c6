// SPDX-License-Identifier: GPL-3.0-or-later
#include "skintool/skin_files.h"

#include <filesystem>

#include "engine/dense_skin.h"
#include "files/posix_files.h"
#include "linux/pictures/qt_pictures.h"
#include "panel/skin_builder.h"
#include "types/text.h"

namespace corvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kBitmapEnding = ".BMP", kTextEnding = ".CSV", kDenseEnding = "@2X.BMP";

bool endsWith(std::string_view name, std::string_view ending) {
    return name.size() > ending.size() && text::sameWithoutCase(name.substr(name.size() - ending.size()), ending);
}

std::string withEnding(const std::string& name, std::string_view ending) {
    std::string exact = name + std::string(ending);
    std::error_code failed;
    if (fs::is_regular_file(exact, failed)) return exact;
    const fs::path folder = fs::path(name).parent_path();
    for (const auto& entry : fs::directory_iterator(folder.empty() ? fs::path(".") : folder, failed)) {
        const fs::path path = folder / entry.path().filename();
        if (entry.is_regular_file(failed) && text::sameWithoutCase(path.string().substr(name.size()), ending) &&
            path.string().starts_with(name)) {
            return path.string();
        }
    }
    return {};
}

void checkDense(const SkinFiles& files, const Picture& bitmap, std::vector<SkinMistake>& mistakes) {
    if (files.dense.empty() || bitmap.empty()) return;
    const Pictures::Decoded dense = QtPictures().decode(files.dense);
    if (dense.picture.empty()) {
        mistakes.push_back({0, false, files.dense + ": " + dense.reason});
    } else if (dense.picture.width() != 2 * bitmap.width() || dense.picture.height() != 2 * bitmap.height()) {
        mistakes.push_back({0, false, files.dense + " is not twice as wide and high as the bitmap"});
    }
}

}  // namespace

SkinFiles findSkin(const std::string& path) {
    SkinFiles files;
    files.name = path;
    for (const std::string_view ending : {kDenseEnding, kBitmapEnding, kTextEnding}) {
        if (!endsWith(path, ending)) continue;
        files.name = path.substr(0, path.size() - ending.size());
        break;
    }
    files.bitmap = withEnding(files.name, kBitmapEnding);
    files.dense = withEnding(files.name, kDenseEnding);
    files.text = withEnding(files.name, kTextEnding);
    return files;
}

Skin readSkin(const SkinFiles& files) {
    Skin skin;
    if (files.bitmap.empty()) {
        skin.mistakes.push_back({0, true, "there is no bitmap " + files.name + std::string(kBitmapEnding)});
    } else {
        QtPictures pictures;
        const Pictures::Decoded decoded = pictures.decode(files.bitmap);
        skin.bitmap = withDense(pictures, decoded.picture, files.bitmap);
        denseImageOf(skin.bitmap);  // read now, while `pictures` lives
        if (decoded.picture.empty()) skin.mistakes.push_back({0, true, files.bitmap + ": " + decoded.reason});
    }
    if (files.text.empty()) {
        skin.mistakes.push_back({0, true, "there is no text file " + files.name + std::string(kTextEnding)});
    } else {
        skin.text = PosixFiles().read(files.text, kMostSkinTextBytes);
        if (!skin.text) skin.mistakes.push_back({0, true, files.text + " cannot be read, or is larger than 4 MiB"});
    }
    return skin;
}

std::vector<SkinMistake> checkSkinFiles(const SkinFiles& files) {
    Skin skin = readSkin(files);
    std::vector<SkinMistake> mistakes = std::move(skin.mistakes);
    checkDense(files, skin.bitmap, mistakes);
    if (!skin.text) return mistakes;
    std::optional<BitmapSize> size;
    if (!skin.bitmap.empty()) size = BitmapSize{skin.bitmap.width(), skin.bitmap.height()};
    for (SkinMistake& mistake : checkSkin(*skin.text, size)) mistakes.push_back(std::move(mistake));
    return mistakes;
}

}  // namespace corvane
