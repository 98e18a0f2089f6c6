// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "windows/handle.h"
#include "windows/message_window.h"

namespace corvane {

/// One running player a program folder. The first start holds a mutex of the session and listens; a later one hands its
/// files over. Both are named by the folder they stand for.
class Instance {
public:
    using FilesHandler = std::function<void(const std::vector<std::string>&)>;

    /// folder: the program folder. Nothing is made before acquire().
    explicit Instance(std::string folder) : folder_(std::move(folder)) {}

    /// True: this is the only one. Repeating it asks nobody again.
    bool acquire();
    /// How many of the files, from the first on, one call hands over.
    static std::size_t fitting(const std::vector<std::string>& files);
    /// Gives files to the instance that runs; without any it only comes to the front. False: it does not answer.
    bool handOver(const std::vector<std::string>& files) const;
    /// The handler gets what another start hands over, inside that one's call; no files: be seen.
    void onFiles(FilesHandler handler) { handler_ = std::move(handler); }

private:
    std::wstring name() const;
    HWND findListener() const;
    std::optional<LRESULT> received(UINT message, LPARAM data);

    std::string folder_;
    Handle mutex_;
    std::unique_ptr<MessageWindow> listener_;
    bool asked_ = false;
    bool only_ = true;
    FilesHandler handler_;
};

}  // namespace corvane
