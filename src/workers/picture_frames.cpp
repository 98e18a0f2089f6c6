// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/picture_frames.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <utility>

#include "workers/worker.h"

namespace corvane {

namespace {

using Steady = std::chrono::steady_clock;

std::atomic<int> running{0};

/// One decoding, from when it is asked for until it has ended or was dropped.
class CountsRunning {
public:
    CountsRunning() { mayRun_ = ++running <= PictureFrames::kMostLeft; }
    CountsRunning(const CountsRunning&) = delete;
    CountsRunning& operator=(const CountsRunning&) = delete;
    ~CountsRunning() { end(); }
    bool mayRun() const { return mayRun_; }
    void end() {
        if (!std::exchange(ended_, true)) --running;
    }

private:
    bool mayRun_ = false;
    bool ended_ = false;
};

}  // namespace

struct PictureFrames::Shared {
    Post post;
    Open open;
    Make make = nullptr;
    std::weak_ptr<Told> told;
    std::atomic<bool> givenUp{false};
    std::unique_ptr<FrameReader> reader;  ///< the running task's own

    Pictures::Frame decode();
    void tell(Pictures::Frame frame) const;
};

Pictures::Frame PictureFrames::Shared::decode() {
    const GivenUp isOver = [this] { return givenUp.load(); };
    const auto began = Steady::now();
    if (open) reader = std::exchange(open, {})(isOver);
    auto pixels = reader ? reader->next(isOver) : std::nullopt;
    if (!pixels || !pixels->pixels.reason.empty()) {
        reader.reset();
        return {};
    }
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(Steady::now() - began).count();
    const int least = static_cast<int>(std::min<std::int64_t>(took, 1'000'000)) * kLeastRest;
    return {make(std::move(pixels->pixels)), std::max(pixels->milliseconds, least), pixels->isLast};
}

/// Any thread.
void PictureFrames::Shared::tell(Pictures::Frame frame) const {
    post([frame = std::move(frame), who = told] {
        if (const auto call = who.lock()) (*call)(frame);
    });
}

PictureFrames::PictureFrames(Post post, Open open, Make make, Told told)
    : told_(std::make_shared<Told>(std::move(told))), shared_(std::make_shared<Shared>()) {
    shared_->post = std::move(post);
    shared_->open = std::move(open);
    shared_->make = make;
    shared_->told = told_;
}

PictureFrames::~PictureFrames() { shared_->givenUp = true; }

void PictureFrames::next() {
    const auto counted = std::make_shared<CountsRunning>();
    const auto decode = [shared = shared_, counted](const Worker::GiveUp& /*atTheEnd*/) {
        Pictures::Frame frame = shared->decode();
        counted->end();
        shared->tell(std::move(frame));
    };
    const bool runs = counted->mayRun() && Worker::runOnKept(decode, [shared = shared_] { shared->tell({}); });
    if (!runs) shared_->tell({});
}

}  // namespace corvane
