// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "files/posix_files.h"
#include "skintool/skin_preview.h"
#include "skintool/skin_words.h"
#include "skintool/template_skin.h"

namespace {

using namespace corvane;
namespace fs = std::filesystem;

constexpr int kFine = 0, kFound = 1, kFailed = 2;
constexpr double kMinScale = 0.5, kMaxScale = 4.0;
int failed(const std::string& reason) {
    std::fprintf(stderr, "corvane-skin: %s\n", reason.c_str());
    return kFailed;
}

std::string encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, format) ? bytes.toStdString() : std::string();
}

int begin(const std::string& name, const fs::path& folder) {
    if (name.empty() || name.find('/') != std::string::npos) return failed("\"" + name + "\" cannot be a skin's name");
    const TemplateSkin skin = templateSkin();
    const std::vector<std::pair<std::string, std::string>> files = {{name + ".BMP", encoded(skin.bitmap, "BMP")},
                                                                    {name + ".CSV", skin.text}};
    std::error_code error;
    for (const auto& [file, bytes] : files) {
        if (fs::exists(folder / file, error)) return failed((folder / file).string() + " is there already");
    }
    fs::create_directories(folder, error);
    for (const auto& [file, bytes] : files) {
        const std::string path = (folder / file).string();
        if (bytes.empty() || !PosixFiles().replace(path, bytes)) return failed(path + " cannot be written");
        std::printf("%s\n", path.c_str());
    }
    return kFine;
}

int check(const std::string& path) {
    const SkinFiles files = findSkin(path);
    const auto mistakes = checkSkinFiles(files);
    for (const SkinMistake& mistake : mistakes) {
        const std::string place = mistake.line == 0 ? files.name : files.text + ":" + std::to_string(mistake.line);
        std::printf("%s: %s: %s\n", place.c_str(), mistake.keepsPanelAway ? "error" : "warning", mistake.text.c_str());
    }
    if (mistakes.empty()) std::printf("%s: in order\n", files.name.c_str());
    return mistakes.empty() ? kFine : kFound;
}

int preview(const std::string& path, const fs::path& folder, double scale) {
    const auto states = previewSkin(readSkin(findSkin(path)), scale);
    if (states.empty()) {
        check(path);
        return kFound;
    }
    std::error_code error;
    fs::create_directories(folder, error);
    for (const auto& [name, image] : states) {
        const std::string file = (folder / (name + ".png")).string();
        if (!PosixFiles().replace(file, encoded(image, "PNG"))) return failed(file + " cannot be written");
        std::printf("%s\n", file.c_str());
    }
    return kFine;
}

/// Takes --scale off the words. False: it makes no sense.
bool takeScale(std::vector<std::string>& words, double& scale) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] != "--scale") continue;
        bool isNumber = false;
        scale = i + 1 < words.size() ? QString::fromStdString(words[i + 1]).toDouble(&isNumber) : 0;
        if (!isNumber || !(scale >= kMinScale && scale <= kMaxScale)) return false;
        words.erase(words.begin() + static_cast<std::ptrdiff_t>(i), words.begin() + static_cast<std::ptrdiff_t>(i) + 2);
        return true;
    }
    return true;
}

int run(std::vector<std::string> words) {
    double scale = 1;
    if (!takeScale(words, scale)) return failed("--scale needs a number from 0.5 to 4");
    const std::size_t count = words.size();
    if (count >= 2 && words[0] == "new" && count <= 3) return begin(words[1], count == 3 ? words[2] : ".");
    if (count == 2 && words[0] == "check") return check(words[1]);
    if (count == 3 && words[0] == "preview") return preview(words[1], words[2], scale);
    std::fputs(skinUsage().c_str(), stderr);
    return kFailed;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    for (const std::string& word : words) {
        if (word == "--help" || word == "-h") return std::fputs(skinUsage().c_str(), stdout) < 0 ? kFailed : kFine;
        if (word == "--version") return std::puts("corvane-skin " CORVANE_VERSION) < 0 ? kFailed : kFine;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");  // panels are painted, never shown
    qunsetenv("QT_SCALE_FACTOR");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});  // Qt's remarks on the session
    int ownArguments = std::min(argc, 1);
    const QApplication application(ownArguments, argv);
    std::setlocale(LC_NUMERIC, "C");
    return run(words);
}
