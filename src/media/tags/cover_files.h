// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "drives/private_folder.h"
#include "platform/file_texts.h"

namespace corvane {

/// Pictures that files hold inside, written where other programs of this user can read them: into the player's own
/// folder of the session, nowhere else. Each goes with the last one that holds it; those that a killed player left go
/// when the next one begins. The same bytes are one file. Any thread.
class CoverFiles {
public:
    /// A folder that cannot be used: there are no such files.
    explicit CoverFiles(std::string runtimeFolder);
    /// The bytes of a JPEG or PNG picture as a file; null when it cannot be written.
    std::shared_ptr<const CoverFile> keep(const std::string& bytes);

    static constexpr std::size_t kMostBytes = std::size_t{32} << 20U;  ///< of all that are there

private:
    class Written;
    struct Shelf;  ///< outlives the files
    std::shared_ptr<Shelf> shelf_;
};

}  // namespace corvane
