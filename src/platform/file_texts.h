// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace corvane {

/// A picture that belongs to a file, as a file that other programs can read. What was made for them goes with the last
/// one that holds this.
class CoverFile {
public:
    explicit CoverFile(std::string path) : path_(std::move(path)) {}
    CoverFile(const CoverFile&) = delete;
    CoverFile& operator=(const CoverFile&) = delete;
    virtual ~CoverFile() = default;
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

/// What a file says of itself; "", 0 and null: nothing. Texts are bytes as the file has them.
struct FileTexts {
    std::string title, artist, album;
    int track = 0;  ///< its number on its album
    std::shared_ptr<const CoverFile> cover;
};

/// Reads what files say of themselves. All calls are made on the user-interface thread.
class TextReader {
public:
    using Done = std::function<void(FileTexts)>;
    enum class What { All, Words };  ///< words: no cover is looked for

    virtual ~TextReader() = default;
    /// Reads in a worker, in bounded time and memory, and returns at once. `done` is called in a posted event of its
    /// own, once, also when there is nothing to be read. Each asker asks again only when that has come.
    virtual void read(const std::string& path, What what, Done done) = 0;
};

}  // namespace corvane
