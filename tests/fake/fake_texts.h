// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "fake/schedule.h"
#include "platform/event_loop.h"
#include "platform/file_texts.h"

namespace corvane {

/// Texts of files, declared by path.
class FakeTexts : public TextReader {
public:
    FakeTexts(EventLoop& loop, Schedule& schedule) : loop_(loop), schedule_(schedule) {}

    void read(const std::string& path, What what, Done done) override {
        (what == What::All ? asked : askedForWords).push_back(path);
        const auto found = files.find(path);
        FileTexts texts = found == files.end() ? FileTexts() : found->second;
        auto answer = [this, done = std::move(done), texts = std::move(texts)] {
            loop_.post([done, texts] { done(texts); });
        };
        schedule_.at(schedule_.now() + readingMs, std::move(answer));
    }

    std::map<std::string, FileTexts> files;
    std::vector<std::string> asked;          ///< paths, in order
    std::vector<std::string> askedForWords;  ///< the same, without covers
    int readingMs = 0;                       ///< how long one takes

private:
    EventLoop& loop_;
    Schedule& schedule_;
};

}  // namespace corvane
