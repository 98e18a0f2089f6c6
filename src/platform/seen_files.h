// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvane {

/// What is read of files whose rows are seen: of one after the other, each once, that of the last ones kept. All on the
/// user-interface thread.
template <class What>
class SeenFiles {
public:
    static constexpr std::size_t kMostKept = 256;  ///< files
    /// More at a time are not read: they would drive each other out.
    static constexpr std::size_t kMostWanted = kMostKept / 2;

    /// Begins to read a file and returns; `done` is called later.
    using Read = std::function<void(const std::string& file, std::function<void(What)> done)>;

    /// `giveUp`: what is being read is not wanted any more, and `done` not called; not tied: it is waited for.
    /// `changed` is called when one has come, by then with the next one begun.
    SeenFiles(Read read, std::function<void()> giveUp, std::function<void()> changed)
        : read_(std::move(read)), giveUp_(std::move(giveUp)), changed_(std::move(changed)) {}
    SeenFiles(const SeenFiles&) = delete;
    SeenFiles& operator=(const SeenFiles&) = delete;
    ~SeenFiles() { want({}); }

    /// These files' rows are seen now, in this order; what was wanted before is not any more.
    void want(const std::vector<std::string>& files) {
        waiting_.clear();
        bool isReadingWanted = false;
        for (const std::string& each : files) {
            if (const auto found = kept_.find(each); found != kept_.end()) {
                used_.splice(used_.begin(), used_, found->second.use);
            } else if (each == reading_) {
                isReadingWanted = true;
            } else if (waiting_.size() < kMostWanted &&
                       std::find(waiting_.begin(), waiting_.end(), each) == waiting_.end()) {
                waiting_.push_back(each);
            }
        }
        if (!reading_.empty() && !isReadingWanted && giveUp_) {
            giveUp_();
            reading_.clear();
        }
        if (reading_.empty()) next();
    }
    /// Null: not read yet, or not kept any more. Valid until the next call.
    const What* of(const std::string& file) const {
        const auto found = kept_.find(file);
        return found == kept_.end() ? nullptr : &found->second.what;
    }

private:
    struct Kept {
        What what;
        std::list<std::string>::iterator use;
    };
    void next() {
        if (waiting_.empty()) return;
        reading_ = std::move(waiting_.front());
        waiting_.pop_front();
        read_(reading_, [this, alive = std::weak_ptr(alive_), file = reading_](What what) {
            if (alive.expired()) return;
            reading_.clear();
            keep(file, std::move(what));
            next();
            changed_();
        });
    }
    void keep(const std::string& file, What what) {
        used_.push_front(file);
        kept_[file] = {std::move(what), used_.begin()};
        if (kept_.size() <= kMostKept) return;
        kept_.erase(used_.back());
        used_.pop_back();
    }

    Read read_;
    std::function<void()> giveUp_, changed_;
    std::deque<std::string> waiting_;
    std::string reading_;          ///< "": nothing is
    std::list<std::string> used_;  ///< the files that are kept, those wanted last in front
    std::unordered_map<std::string, Kept> kept_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace corvane
