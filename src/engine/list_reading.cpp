// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/list_reading.h"

#include <utility>

#include "engine/opened_lists.h"

namespace corvane {

struct ListReading::Asked {
    std::shared_ptr<const OpeningRules> rules;
    std::vector<std::string> named;
    std::size_t room = 0;
    Taken taken;
    std::shared_ptr<FoundFiles> found = std::make_shared<FoundFiles>();
};

ListReading::ListReading(Ports& ports, std::function<void()> changed) : ports_(ports), changed_(std::move(changed)) {}

ListReading::~ListReading() {
    stopTelling();
    run_.reset();
}

bool ListReading::begin(OpeningRules rules, std::vector<std::string> named, std::size_t room, Taken taken) {
    if (ports_.work == nullptr || asked_.size() >= kMostAsked) return false;
    auto asked = std::make_unique<Asked>();
    asked->rules = std::make_shared<const OpeningRules>(std::move(rules));
    asked->named = std::move(named);
    asked->room = room;
    asked->taken = std::move(taken);
    asked_.push_back(std::move(asked));
    if (asked_.size() == 1) next();
    return true;
}

void ListReading::stop() {
    if (!isReading()) return;
    asked_.clear();
    run_.reset();
    stopTelling();
    changed_();
}

std::size_t ListReading::found() const { return run_ ? run_->told() : 0; }

void ListReading::next() {
    if (timer_ == 0) startTelling();
    Asked& asked = *asked_.front();
    auto task = [rules = asked.rules, named = std::move(asked.named), room = asked.room,
                 found = asked.found](FileWork::Course& course) {
        const Looking looking{course.files(), [&course] { return course.isGivenUp(); },
                              [&course] { return course.milliseconds() >= kMostReadingMs; },
                              [&course](std::size_t count) { course.tell(count); }};
        *found = findFiles(*rules, looking, named, room);
    };
    run_ = ports_.work->begin(std::move(task), [this](bool ended) { end(ended); });
}

void ListReading::end(bool ended) {
    const std::unique_ptr<Asked> asked = std::move(asked_.front());
    asked_.pop_front();
    run_.reset();
    if (asked_.empty()) {
        stopTelling();
        changed_();
    } else {
        next();
    }
    FoundFiles found;
    if (ended) {
        found = std::move(*asked->found);
    } else {
        found.reasons = {"The system has no thread or no memory left to look for them."};
    }
    asked->taken(std::move(found));  // which may stop all, or begin anew
}

void ListReading::startTelling() {
    told_ = false;
    timer_ = ports_.timers.start(kTellMs, [this, alive = std::weak_ptr(alive_)] {
        if (alive.expired()) return;
        ports_.loop.post([this, alive] {
            if (alive.expired() || timer_ == 0) return;
            told_ = true;
            changed_();
        });
    });
}

void ListReading::stopTelling() {
    if (timer_ != 0) ports_.timers.stop(std::exchange(timer_, 0));
    told_ = false;
}

}  // namespace corvane
