// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "program/instance.h"
#include "winapi/handle.h"
#include "winapi/message_window.h"

namespace corvane {

/// The player's place is a mutex of the session; calls come as a message to a window, and are told inside the caller's.
/// Both are named by the folder they stand for.
class WindowInstance : public Instance {
public:
    /// folder: the program folder. Nothing is made before acquire().
    explicit WindowInstance(std::string folder);

protected:
    bool takePlace() override;
    bool deliver(const std::string& message) const override;

private:
    std::wstring name() const;
    HWND findListener() const;
    std::optional<LRESULT> received(UINT message, LPARAM data);

    std::string folder_;
    Handle mutex_;
    std::unique_ptr<MessageWindow> listener_;
};

}  // namespace corvane
