// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "toolkit/movie_state_control.h"
#include "windows/media/filter_graph.h"
#include "windows/media/ui_post.h"
#include "windows/message_window.h"
#include "windows/movie_surface.h"

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
    std::optional<double> target_;  ///< where the last seek went, until the graph plays on from there
    bool playing_ = false;
    bool atEnd_ = false;
    int looksAtEnd_ = 0;
    HWND host_ = nullptr;
    RECT area_{};
};

}  // namespace corvane
