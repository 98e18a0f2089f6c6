// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/graphics_drawing.h"

#include <mpv/render_gl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

#include "media/movies/graphics_choice.h"
#include "media/movies/graphics_display.h"
#include "media/movies/movie_library.h"
#include "workers/worker.h"

namespace corvane {

namespace {

std::int64_t nowInMs() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::max<std::int64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count(), 1);
}

char* apiName() {
    static std::array<char, 7> name{'o', 'p', 'e', 'n', 'g', 'l', '\0'};
    return name.data();
}

}  // namespace

GraphicsDrawing::Busy::Busy(GraphicsDrawing& drawing) : drawing_(drawing) { drawing_.busySince_ = nowInMs(); }
GraphicsDrawing::Busy::~Busy() { drawing_.busySince_ = 0; }

GraphicsDrawing::GraphicsDrawing(mpv_handle* player, bool evenBySoftware, std::function<void()> told)
    : player_(player),
      evenBySoftware_(evenBySoftware),
      woken_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      told_(std::move(told)) {}

GraphicsDrawing::~GraphicsDrawing() = default;

bool GraphicsDrawing::begin() {
    if (!woken_) return false;
    gone_ = false;
    busySince_ = nowInMs();
    const auto broken = [self = shared_from_this()] {
        self->lose(Worker::kBroken);
        const std::lock_guard lock(self->mutex_);
        self->gone_ = true;
        self->changed_.notify_all();
    };
    const bool begun = Worker::run([self = shared_from_this()](const Worker::GiveUp&) { self->run(); }, broken);
    if (!begun) gone_ = true;
    return begun;
}

bool GraphicsDrawing::hangs() const {
    const std::int64_t since = busySince_;
    return since != 0 && nowInMs() - since > kPatience.count();
}

void GraphicsDrawing::showIn(unsigned long window, PictureSize devicePixels) {
    {
        const std::lock_guard lock(mutex_);
        window_ = window;
        size_ = devicePixels;
        ++asked_;
    }
    wake();
}

bool GraphicsDrawing::settle(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [this] { return gone_ || done_ == asked_; });
}

void GraphicsDrawing::hush() {
    const std::lock_guard lock(mutex_);
    told_ = {};
}

bool GraphicsDrawing::end(std::chrono::milliseconds patience) {
    ending_ = true;
    wake();
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [this] { return gone_; });
}

std::string GraphicsDrawing::reason() const {
    const std::lock_guard lock(mutex_);
    return reason_;
}

void GraphicsDrawing::wake() const {
    const std::uint64_t one = 1;
    // Full it is readable as well.
    [[maybe_unused]] const ssize_t written = ::write(woken_.get(), &one, sizeof one);
}

void GraphicsDrawing::tell() {
    const std::lock_guard lock(mutex_);
    if (told_) told_();
}

void GraphicsDrawing::lose(const std::string& reason) {
    {
        const std::lock_guard lock(mutex_);
        reason_ = reason;
    }
    state_ = State::Lost;
    tell();
}

void GraphicsDrawing::run() {
    if (start()) {
        work();
    }
    close();
    if (state_ != State::Lost) state_ = State::Ended;
    const std::lock_guard lock(mutex_);
    gone_ = true;
    changed_.notify_all();
}

bool GraphicsDrawing::start() {
    const Busy busy(*this);
    std::string reason;
    display_ = GraphicsDisplay::open(reason);
    if (display_ && !evenBySoftware_ && drawsBySoftware(display_->renderer()))
        reason = "the driver, " + display_->renderer() + ", draws by software";
    if (!reason.empty()) return lose(reason), false;
    mpv_opengl_init_params driver{[](void* /*context*/, const char* name) { return GraphicsDisplay::function(name); },
                                  nullptr};
    std::array<mpv_render_param, 4> params{{{MPV_RENDER_PARAM_API_TYPE, apiName()},
                                            {MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &driver},
                                            {MPV_RENDER_PARAM_X11_DISPLAY, display_->connection()},
                                            {MPV_RENDER_PARAM_INVALID, nullptr}}};
    if (movieLibrary().mpv_render_context_create(&context_, player_, params.data()) < 0) {
        context_ = nullptr;
        return lose("the movie library does not draw with it"), false;
    }
    movieLibrary().mpv_render_context_set_update_callback(
        context_, [](void* self) { static_cast<GraphicsDrawing*>(self)->wake(); }, this);
    state_ = State::Drawing;
    tell();
    return true;
}

void GraphicsDrawing::work() {
    constexpr short kReadable = POLLIN;
    std::array<pollfd, 2> waited{{{woken_.get(), kReadable, 0}, {display_->descriptor(), kReadable, 0}}};
    while (!ending_ && state_ == State::Drawing) {
        ::poll(waited.data(), waited.size(), -1);
        if ((waited[1].revents & (POLLERR | POLLHUP | POLLNVAL)) != 0) return lose("the display is gone");
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t read = ::read(woken_.get(), &count, sizeof count);
        const Busy busy(*this);
        bool anew = takeWindow();
        if (state_ != State::Drawing) return;
        anew = display_->wasUncovered() || anew;
        draw(anew);
        // What came in while it was shown lies in the connection, which is not readable for it.
        while (state_ == State::Drawing && display_->wasUncovered()) draw(true);
    }
}

/// True: what is seen there must be drawn.
bool GraphicsDrawing::takeWindow() {
    std::unique_lock lock(mutex_);
    if (done_ == asked_) return false;
    const std::uint32_t asked = asked_;
    const unsigned long window = window_;
    const PictureSize size = size_;
    lock.unlock();
    // A surface has the size that its window has when it is made.
    const bool taken = (window == drawnIn_ && size == drawn_) || display_->attach(window);
    drawnIn_ = window;
    drawn_ = size;
    if (!taken) lose("the driver does not draw in the window");
    lock.lock();
    done_ = asked;
    changed_.notify_all();
    return window != 0;
}

void GraphicsDrawing::draw(bool anew) {
    const bool comes = (movieLibrary().mpv_render_context_update(context_) & MPV_RENDER_UPDATE_FRAME) != 0;
    if (!comes && (!anew || !hasFrame_)) return;
    const bool seen = drawnIn_ != 0;
    int flip = 1;
    int skip = seen ? 0 : 1;  // one that is not taken in time holds the player up
    mpv_opengl_fbo target{0, std::max(drawn_.width, 1), std::max(drawn_.height, 1), 0};
    std::array<mpv_render_param, 4> params{{{MPV_RENDER_PARAM_OPENGL_FBO, &target},
                                            {MPV_RENDER_PARAM_FLIP_Y, &flip},
                                            {MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
                                            {MPV_RENDER_PARAM_INVALID, nullptr}}};
    const bool drawn = movieLibrary().mpv_render_context_render(context_, params.data()) >= 0;
    if (seen && drawn && !display_->show()) return lose("the driver does not show what it drew");
    if (display_->lost()) return lose("the driver has lost what it had");
    if (seen && drawn) movieLibrary().mpv_render_context_report_swap(context_);
    if (comes && !hasFrame_.exchange(true)) tell();
}

void GraphicsDrawing::close() {
    const Busy busy(*this);
    if (context_ != nullptr) movieLibrary().mpv_render_context_free(std::exchange(context_, nullptr));
    display_.reset();
}

}  // namespace corvane
