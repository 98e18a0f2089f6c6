// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>

#include "platform/file_texts.h"
#include "workers/ui_post.h"

namespace corvane {

/// What files say of themselves, each read in a worker of its own: a drive may not answer. Covers are not looked for.
class WindowsTexts : public TextReader {
public:
    /// post: its own, which it stops.
    explicit WindowsTexts(UiPost post) : post_(std::move(post)) {}
    ~WindowsTexts() override { post_.stop(); }

    void read(const std::string& path, What what, Done done) override;

private:
    UiPost post_;
};

}  // namespace corvane
