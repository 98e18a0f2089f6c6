// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/tags/worker_texts.h"

#include <utility>

#include "media/tags/file_tags.h"

namespace corvane {

namespace {

FileTexts textsOf(const std::string& path, TextReader::What what, CoverFiles& covers, const Worker::GiveUp& givenUp) {
    FileTags tags = readFileTags(path, givenUp, what == TextReader::What::All);
    FileTexts texts{std::move(tags.title), std::move(tags.artist), std::move(tags.album), tags.track, nullptr};
    if (!tags.cover.empty()) {
        texts.cover = covers.keep(tags.cover);
    } else if (!tags.coverPath.empty()) {
        texts.cover = std::make_shared<CoverFile>(std::move(tags.coverPath));
    }
    return texts;
}

}  // namespace

WorkerTexts::WorkerTexts(UiPost post, std::string runtimeFolder)
    : post_(std::move(post)), covers_(std::make_shared<CoverFiles>(std::move(runtimeFolder))) {}

void WorkerTexts::read(const std::string& path, What what, Done done) {
    const auto answer = [post = post_, done = std::move(done)](const FileTexts& texts) {
        post([done, texts] { done(texts); });
    };
    const auto task = [path, what, answer, covers = covers_](const Worker::GiveUp& givenUp) {
        answer(textsOf(path, what, *covers, givenUp));
    };
    // Where there is no thread or no memory, names stand.
    if (!Worker::run(task, [answer] { answer({}); })) answer({});
}

}  // namespace corvane
