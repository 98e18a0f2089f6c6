// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>

#include "controls/movie_state_control.h"
#include "winapi/message_window.h"
#include "winapi/movies/filter_graph.h"
#include "windows/windowing/movie_surface.h"
#include "workers/ui_post.h"

namespace corvane {

/// The movie control of this desktop: a filter graph with its own video window.
class WindowsMovieControl : public MovieStateControl, public MovieSurface {
public:
    WindowsMovieControl(Form& form, EventLoop& loop, UiPost post, Windows& windows);
    ~WindowsMovieControl() override;

    void setHost(HWND host, const RECT& area) override;
    bool fillsScreen() const override { return wantsToFillScreen(); }

    /// Milliseconds: what has not opened by then fails. A drive or a decoder may never answer.
    static inline UINT longestOpening = 10'000;
    /// So many that were given up and hang all the same, each with its thread and decoders: no further one is begun.
    static inline int mostHanging = 16;
    /// Those of the whole process; any thread.
    static int hanging() { return hanging_; }

protected:
    bool openMovie(const std::string& path) override;
    void closeMovie() override;
    void playMovie() override;
    void pauseMovie() override;
    void seekMovie(double seconds) override;
    void setMovieRate(double rate) override;
    double playedPosition() const override;
    double playedDuration() const override { return graph_->duration(); }
    int pictureWidth() const override { return graph_->picture().cx; }
    int pictureHeight() const override { return graph_->picture().cy; }
    void tick(bool on) override;
    void screenFillMayHaveChanged() override { fillsScreenChanged.raise(); }

private:
    /// Where one opening stands, between its worker and this thread.
    enum class Opening { Wanted, GivenUp, Ended };

    void leaveOpening();
    std::optional<LRESULT> handle(UINT message, WPARAM first, LPARAM second);
    void giveUp();
    void adopt(FilterGraph::Built built);
    void takeNews();
    void look();
    void reachEnd();

    ComThread com_{COINIT_APARTMENTTHREADED};
    UiPost post_;
    MessageWindow messages_;
    std::unique_ptr<FilterGraph> graph_;  ///< null while none is open
    /// Of the open, the play and the seek: news that belong to another number are late.
    std::shared_ptr<LPARAM> turn_ = std::make_shared<LPARAM>(0);
    std::shared_ptr<std::atomic<Opening>> opening_;  ///< of the last one
    static inline std::atomic<int> hanging_ = 0;
    std::optional<double> target_;  ///< where the last seek went, until the graph plays on from there
    bool playing_ = false;
    bool atEnd_ = false;
    int looksAtEnd_ = 0;
    HWND host_ = nullptr;
    RECT area_{};
};

}  // namespace corvane
