// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_pictures.h"

#include <stdexcept>
#include <utility>

namespace corvane {

namespace {

class Pixels : public PictureData {
public:
    Pixels(int width, int height, std::vector<std::uint32_t> pixels)
        : width_(width), height_(height), pixels_(std::move(pixels)) {
        const auto area = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        if (width < 1 || height < 1 || (pixels_.size() != 1 && pixels_.size() != area)) {
            throw std::logic_error("a picture with the wrong number of pixels");
        }
    }
    int width() const override { return width_; }
    int height() const override { return height_; }
    std::uint32_t pixel(int x, int y) const override {
        if (x < 0 || y < 0 || x >= width_ || y >= height_) throw std::logic_error("a pixel outside the picture");
        if (pixels_.size() == 1) return pixels_[0];
        return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
    }

private:
    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
};

/// A part of another picture, which it keeps alive.
class Part : public PictureData {
public:
    Part(std::shared_ptr<const PictureData> whole, const Pictures::Cell& cell)
        : whole_(std::move(whole)), cell_(cell) {}
    int width() const override { return cell_.width; }
    int height() const override { return cell_.height; }
    std::uint32_t pixel(int x, int y) const override {
        if (x < 0 || y < 0 || x >= cell_.width || y >= cell_.height) {
            throw std::logic_error("a pixel outside the picture");
        }
        return whole_->pixel(cell_.x + x, cell_.y + y);
    }

private:
    std::shared_ptr<const PictureData> whole_;
    Pictures::Cell cell_;
};

/// Each is told in an event of its own.
class FakeFrames : public Pictures::Frames {
public:
    FakeFrames(FakeLoop& loop, std::vector<Pictures::Frame> frames, int& asked,
               std::function<void(Pictures::Frame)> told)
        : loop_(loop),
          frames_(std::move(frames)),
          asked_(asked),
          told_(std::make_shared<std::function<void(Pictures::Frame)>>(std::move(told))) {}
    void next() override {
        ++asked_;
        const Pictures::Frame frame = at_ < frames_.size() ? frames_[at_++] : Pictures::Frame();
        loop_.post([frame, who = std::weak_ptr(told_)] {
            if (const auto call = who.lock()) (*call)(frame);
        });
    }

private:
    FakeLoop& loop_;
    std::vector<Pictures::Frame> frames_;
    int& asked_;
    std::shared_ptr<std::function<void(Pictures::Frame)>> told_;
    std::size_t at_ = 0;
};

}  // namespace

Picture makePicture(int width, int height, std::vector<std::uint32_t> pixels) {
    return Picture(std::make_shared<Pixels>(width, height, std::move(pixels)));
}

Pictures::Decoded FakePictures::make(const std::string& path) const {
    const auto found = declared_.find(path);
    if (found == declared_.end()) return {{}, "no such picture"};
    const Declared& it = found->second;
    if (!it.reason.empty()) return {{}, it.reason};
    return {makePicture(it.width, it.height, it.pixels), ""};
}

Pictures::Decoded FakePictures::decode(const std::string& path) {
    log_.did("pictures.decode " + path);
    return take(path);
}

std::optional<Pictures::Decoded> FakePictures::begin(const std::string& path, std::function<void(Decoded)> done) {
    log_.did("pictures.decode " + path);
    forget();
    if (decodingMs == 0 || (ahead_ && ahead_->first == path)) return take(path);
    begun_ = schedule_.at(schedule_.now() + decodingMs, [this, path, done = std::move(done)] { finish(path, done); });
    return std::nullopt;
}

void FakePictures::giveUp() {
    log_.did("pictures.giveUp");
    forget();
}

void FakePictures::forget() {
    ++number_;
    if (begun_) schedule_.cancel(*begun_);
    begun_.reset();
}

void FakePictures::finish(const std::string& path, const std::function<void(Decoded)>& done) {
    begun_.reset();
    loop_.post([this, decoded = take(path), done, number = number_] {
        if (number == number_) done(decoded);
    });
}

Pictures::Decoded FakePictures::take(const std::string& path) {
    if (roomIsTaken && roomIsTaken()) return {{}, "too large", true};
    if (ahead_ && ahead_->first == path) return std::exchange(ahead_, std::nullopt)->second;
    return make(path);
}

void FakePictures::decodeAhead(const std::string& path) {
    log_.did("pictures.decodeAhead " + path);
    if (begun_) throw std::logic_error("decoded ahead while another picture is on its way");
    ahead_ = {path, make(path)};
}

Picture FakePictures::cut(const Picture& whole, const Cell& cell) {
    log_.asked("pictures.cut");
    if (whole.empty() || cell.width < 1 || cell.height < 1 || cell.x < 0 || cell.y < 0) return {};
    if (cell.width > whole.width() - cell.x || cell.height > whole.height() - cell.y) return {};
    return Picture(std::make_shared<Part>(whole.data(), cell));
}

std::unique_ptr<Pictures::Frames> FakePictures::frames(const std::string& path, std::function<void(Frame)> told) {
    log_.did("pictures.frames " + path);
    return std::make_unique<FakeFrames>(loop_, moving[path], framesAsked, std::move(told));
}

int FakePictures::paintStretched(PictureBox& box, float width, float height) {
    log_.did("pictures.paintStretched " + std::to_string(static_cast<int>(width)) + " " +
             std::to_string(static_cast<int>(height)));
    if (paintError == 0) box.setPainted(width, height);
    return paintError;
}

void FakePictures::add(const std::string& path, int width, int height, std::uint32_t colour) {
    add(path, width, height, std::vector<std::uint32_t>{colour});
}

void FakePictures::add(const std::string& path, int width, int height, std::vector<std::uint32_t> pixels) {
    declared_[path] = {width, height, std::move(pixels), ""};
}

void FakePictures::addBroken(const std::string& path, std::string reason) {
    declared_[path] = {0, 0, {}, std::move(reason)};
}

}  // namespace corvane
