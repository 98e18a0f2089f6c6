// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/tags/windows_texts.h"

#include <utility>

#include "winapi/tags/file_tags.h"
#include "winapi/text.h"
#include "workers/worker.h"

namespace corvane {

void WindowsTexts::read(const std::string& path, What /*what*/, Done done) {
    const auto answer = [post = post_, done = std::move(done)](const FileTexts& texts) {
        post([done, texts] { done(texts); });
    };
    const auto task = [path, answer](const Worker::GiveUp& /*givenUp*/) { answer(textsOfFile(toWide(path))); };
    // Where there is no thread or no memory, names stand.
    if (!Worker::run(task, [answer] { answer({}); })) answer({});
}

}  // namespace corvane
