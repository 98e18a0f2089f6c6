// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "drives/descriptor.h"
#include "pictures/picture_budget.h"

struct mpv_handle;
struct mpv_render_context;

namespace corvane {

class GraphicsDisplay;

/// The thread that has one player's frames drawn by the graphics driver, in the window that it is told. It holds all
/// that it uses: where the driver hangs, it is left behind with the player. Used by any thread.
class GraphicsDrawing : public std::enable_shared_from_this<GraphicsDrawing> {
public:
    enum class State { Beginning, Drawing, Lost, Ended };

    /// So long a frame, or the driver's start, may take before it counts as hanging.
    static constexpr std::chrono::milliseconds kPatience{3'000};

    /// evenBySoftware: also with a driver that has no card. told: called on any thread when the state has changed or
    /// the first frame has come since the last forget(), until hush().
    GraphicsDrawing(mpv_handle* player, bool evenBySoftware, std::function<void()> told);
    GraphicsDrawing(const GraphicsDrawing&) = delete;
    GraphicsDrawing& operator=(const GraphicsDrawing&) = delete;
    ~GraphicsDrawing();

    /// Once. False: the system refuses a thread.
    bool begin();
    State state() const { return state_; }
    /// It is busy with one thing for longer than the patience.
    bool hangs() const;
    /// The player has a frame since the last forget().
    bool hasFrame() const { return hasFrame_; }
    void forget() { hasFrame_ = false; }
    /// Frames go to that window of X11 from now on, which has that size; 0: nowhere.
    void showIn(unsigned long window, PictureSize devicePixels);
    /// Waits until nothing is drawn in another window than the one that was told last. False: it still is.
    bool settle(std::chrono::milliseconds patience);
    void hush();
    /// Ends the thread and waits for it. False: the driver does not come back, and the player must be left as it is.
    bool end(std::chrono::milliseconds patience);
    /// In words, why it was lost.
    std::string reason() const;

private:
    /// While one lives the thread waits for the driver.
    class Busy {
    public:
        explicit Busy(GraphicsDrawing& drawing);
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;
        ~Busy();

    private:
        GraphicsDrawing& drawing_;
    };

    void run();
    bool start();
    void work();
    bool takeWindow();
    void draw(bool anew);
    void close();
    void lose(const std::string& reason);
    void wake() const;
    void tell();

    mpv_handle* const player_;
    const bool evenBySoftware_;
    const Descriptor woken_;
    std::atomic<State> state_{State::Beginning};
    std::atomic<std::int64_t> busySince_{0};  ///< milliseconds of the steady clock; 0 it is not
    std::atomic<bool> hasFrame_{false};
    std::atomic<bool> ending_{false};

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::function<void()> told_;
    unsigned long window_ = 0;
    PictureSize size_;
    std::uint32_t asked_ = 0;  ///< changes of the window
    std::uint32_t done_ = 0;
    std::string reason_;
    bool gone_ = true;  ///< no thread uses the player

    // The thread's own.
    std::unique_ptr<GraphicsDisplay> display_;
    mpv_render_context* context_ = nullptr;
    unsigned long drawnIn_ = 0;
    PictureSize drawn_;
};

}  // namespace corvane
