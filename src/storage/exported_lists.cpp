// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/exported_lists.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "types/text.h"
#include "types/text_encoding.h"

namespace corvane {

namespace {

bool isPlainInAddress(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
           c == '_' || c == '~' || c == '/';
}

std::string escaped(std::string_view path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char c : path) {
        const unsigned byte = static_cast<unsigned char>(c);
        if (isPlainInAddress(c)) {
            result += c;
        } else {
            result.append({'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]});
        }
    }
    return result;
}

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

/// A path between the desktop and a list.
class Written {
public:
    Written(const std::string& path, const std::string& targetFolder, char separator)
        : separator_(separator), path_(path), rest_(path) {
        const std::string below = text::joinPath(targetFolder, "", separator);
        below_ = !targetFolder.empty() && rest_.size() > below.size() && rest_.substr(0, below.size()) == below;
        if (below_) rest_.remove_prefix(below.size());
    }

    std::string onLine() const {
        if (!canStandOnLine()) return wholeAddress();
        // Neither a remark nor the name of a protocol begins there.
        const bool isTakenForOther = below_ && (rest_.front() == '#' || rest_.find(':') != std::string_view::npos);
        return (isTakenForOther ? std::string(".") + separator_ : std::string()).append(rest_);
    }

    /// From the target's folder on, or whole.
    std::string address() const { return below_ ? escaped(withSlashes(rest_)) : wholeAddress(); }

private:
    std::string withSlashes(std::string_view path) const {
        std::string result(path);
        std::replace(result.begin(), result.end(), separator_, '/');
        return result;
    }

    std::string wholeAddress() const {
        const std::string path = withSlashes(path_);
        if (separator_ == '\\' && path.size() >= 2 && path[1] == ':') {  // of a drive
            return "file:///" + path.substr(0, 2) + escaped(std::string_view(path).substr(2));
        }
        if (path.starts_with("//") && separator_ == '\\') return "file:" + escaped(path);
        return (path.starts_with('/') ? "file://" : "") + escaped(path);
    }

    bool canStandOnLine() const {
        if (rest_.empty() || !text::isUtf8(rest_) || std::any_of(rest_.begin(), rest_.end(), isControl)) return false;
        if (rest_.front() == ' ' || rest_.back() == ' ' || rest_.front() == '"') return false;
        // Others take it for a separator.
        return separator_ == '\\' || rest_.find('\\') == std::string_view::npos;
    }

    char separator_;
    std::string_view path_, rest_;
    bool below_ = false;
};

std::string oneLine(const std::string& title) {
    std::string line = text::validUtf8(title);
    std::replace_if(line.begin(), line.end(), isControl, ' ');
    return line;
}

/// As it stands between two tags of XML.
std::string inXml(const std::string& title) {
    std::string result;
    for (const char c : oneLine(title)) {
        if (c == '&') {
            result += "&amp;";
        } else if (c == '<') {
            result += "&lt;";
        } else if (c == '>') {
            result += "&gt;";
        } else {
            result += c;
        }
    }
    return result;
}

std::string tag(std::string_view indent, const std::string& name, const std::string& content) {
    return content.empty() ? std::string() : std::string(indent) + '<' + name + '>' + content + "</" + name + ">\n";
}

}  // namespace

std::string writeM3u8(const std::string& listName, const std::vector<ExportedEntry>& entries,
                      const std::string& targetFolder, char separator) {
    std::string text = "#EXTM3U\n";
    if (!listName.empty()) text += "#PLAYLIST:" + oneLine(listName) + '\n';
    for (const ExportedEntry& each : entries) {
        const int seconds = std::max(each.seconds, -1);
        text += "#EXTINF:" + std::to_string(seconds) + ',' + oneLine(each.title) + '\n';
        text += Written(each.path, targetFolder, separator).onLine() + '\n';
    }
    return text;
}

std::string writeXspf(const std::string& listName, const std::vector<ExportedEntry>& entries,
                      const std::string& targetFolder, char separator) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<playlist version=\"1\" xmlns=\"http://xspf.org/ns/0/\">\n";
    text += tag("  ", "title", inXml(listName)) + "  <trackList>\n";
    for (const ExportedEntry& each : entries) {
        text += "    <track>\n" + tag("      ", "location", Written(each.path, targetFolder, separator).address()) +
                tag("      ", "title", inXml(each.title)) +
                tag("      ", "duration", each.seconds < 0 ? "" : std::to_string(std::int64_t{each.seconds} * 1000)) +
                "    </track>\n";
    }
    return text + "  </trackList>\n</playlist>\n";
}

}  // namespace corvane
