// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "winapi/api.h"
// After windows.h:
#include <dshow.h>

#include <memory>
#include <optional>
#include <string>

#include "winapi/movies/com_pointer.h"

namespace corvane {

/// The size at which a picture of so many pixels has the shape that it is meant to have: larger in one direction where
/// its pixels are not square. aspect: across to down; 0 by 0, or one that no movie has, is not known.
SIZE shownSize(SIZE pixels, SIZE aspect);

/// The system's filter graph of one movie. Built in a worker, which may take as long as the drive and the decoders do;
/// used and let go on the user-interface thread. The graph's own thread owns its video window.
class FilterGraph {
public:
    struct Built {
        std::unique_ptr<FilterGraph> graph;  ///< null when it failed
        std::string reason;
    };
    /// Stopped, at 0, its video window hidden.
    static Built build(const std::wstring& path);

    FilterGraph(const FilterGraph&) = delete;
    FilterGraph& operator=(const FilterGraph&) = delete;
    ~FilterGraph();

    double duration() const { return duration_; }  ///< seconds; 0 unknown
    /// Pixels of the screen at which the picture has its shape; 0 by 0 without a picture.
    SIZE picture() const { return picture_; }
    double position() const;  ///< seconds

    void run();
    void pause();
    void stop();
    /// Stops for it and goes on as it was: a seek of a running graph loses the end on some systems.
    void seek(double seconds);
    void setRate(double rate);

    /// Posts the message with the number whenever an event waits.
    void notify(HWND window, UINT message, LPARAM number);
    enum class News { None, Ended, Aborted };
    /// Takes the events that wait.
    News takeEvents();

    /// Shows the video in that part of the window, fitted in its shape; null: nowhere.
    void show(HWND host, const RECT& area);

private:
    FilterGraph() = default;
    HRESULT render(const std::wstring& path);
    void learn();
    void letMouseThrough() const;

    ComPointer<IGraphBuilder> graph_;
    ComPointer<IMediaControl> control_;
    ComPointer<IMediaSeeking> seeking_;
    ComPointer<IMediaEventEx> events_;
    ComPointer<IVideoWindow> video_;
    double duration_ = 0;
    SIZE picture_{};
    OAFilterState state_ = State_Stopped;
    HWND host_ = nullptr;
};

}  // namespace corvane
