// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/movies/filter_graph.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "winapi/media_file.h"
#include "winapi/text.h"

namespace corvane {

namespace {

constexpr double kUnitsPerSecond = 10'000'000;  // reference time counts in 100 ns

std::string textOf(HRESULT result) {
    std::array<wchar_t, MAX_ERROR_TEXT_LEN> text{};
    DWORD length = AMGetErrorTextW(result, text.data(), static_cast<DWORD>(text.size()));
    while (length > 0 && (text[length - 1] == L'\r' || text[length - 1] == L'\n')) --length;
    if (length > 0) return fromWide({text.data(), length});
    return "This is not a movie that can be played.";
}

}  // namespace

SIZE shownSize(SIZE pixels, SIZE aspect) {
    if (pixels.cx <= 0 || pixels.cy <= 0 || aspect.cx <= 0 || aspect.cy <= 0) return pixels;
    constexpr double kMostStretched = 4;
    const double wanted = static_cast<double>(aspect.cx) / static_cast<double>(aspect.cy);
    const double stretch = wanted * static_cast<double>(pixels.cy) / static_cast<double>(pixels.cx);
    if (stretch > kMostStretched || stretch < 1 / kMostStretched) return pixels;
    if (stretch >= 1) return {std::lround(static_cast<double>(pixels.cx) * stretch), pixels.cy};
    return {pixels.cx, std::lround(static_cast<double>(pixels.cy) / stretch)};
}

FilterGraph::Built FilterGraph::build(const std::wstring& path) {
    if (std::string refusal = refusalOfFile(path); !refusal.empty()) return {nullptr, std::move(refusal)};
    Built built{std::unique_ptr<FilterGraph>(new FilterGraph), {}};
    const HRESULT result = built.graph->render(path);
    if (FAILED(result)) return {nullptr, textOf(result)};
    built.graph->learn();
    return built;
}

HRESULT FilterGraph::render(const std::wstring& path) {
    HRESULT result = graph_.create(CLSID_FilterGraph, IID_IGraphBuilder);
    if (FAILED(result)) return result;
    result = graph_->RenderFile(path.c_str(), nullptr);
    if (FAILED(result)) return result;
    result = control_.from(graph_, IID_IMediaControl);
    if (SUCCEEDED(result)) result = seeking_.from(graph_, IID_IMediaSeeking);
    if (SUCCEEDED(result)) result = events_.from(graph_, IID_IMediaEventEx);
    return result;
}

void FilterGraph::learn() {
    LONGLONG length = 0;
    if (SUCCEEDED(seeking_->GetDuration(&length))) duration_ = static_cast<double>(length) / kUnitsPerSecond;
    ComPointer<IBasicVideo> basic;
    if (FAILED(basic.from(graph_, IID_IBasicVideo)) || FAILED(video_.from(graph_, IID_IVideoWindow))) return;
    // The graph has these interfaces also without a picture; then they refuse.
    long width = 0;
    long height = 0;
    if (FAILED(basic->GetVideoSize(&width, &height)) || width <= 0 || height <= 0) return video_.reset();
    SIZE aspect{};
    ComPointer<IBasicVideo2> shaped;
    if (FAILED(shaped.from(graph_, IID_IBasicVideo2)) ||
        FAILED(shaped->GetPreferredAspectRatio(&aspect.cx, &aspect.cy))) {
        aspect = {};
    }
    picture_ = shownSize({width, height}, aspect);
    video_->put_AutoShow(OAFALSE);
    video_->put_Visible(OAFALSE);
}

FilterGraph::~FilterGraph() {
    if (events_) events_->SetNotifyWindow(0, 0, 0);
    if (control_) control_->Stop();
    if (video_) show(nullptr, {});
}

double FilterGraph::position() const {
    LONGLONG now = 0;
    if (FAILED(seeking_->GetCurrentPosition(&now))) return 0;
    const double seconds = static_cast<double>(now) / kUnitsPerSecond;
    return duration_ > 0 ? std::clamp(seconds, 0.0, duration_) : std::max(seconds, 0.0);
}

void FilterGraph::run() {
    state_ = State_Running;
    control_->Run();
}

void FilterGraph::pause() {
    state_ = State_Paused;
    control_->Pause();
}

void FilterGraph::stop() {
    state_ = State_Stopped;
    control_->Stop();
}

void FilterGraph::seek(double seconds) {
    control_->Stop();
    takeEvents();  // an end from before
    auto target = static_cast<LONGLONG>(std::llround(seconds * kUnitsPerSecond));
    seeking_->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr, AM_SEEKING_NoPositioning);
    if (state_ == State_Running) control_->Run();
    if (state_ == State_Paused) control_->Pause();
}

void FilterGraph::setRate(double rate) { seeking_->SetRate(rate); }

void FilterGraph::notify(HWND window, UINT message, LPARAM number) {
    events_->SetNotifyWindow(reinterpret_cast<OAHWND>(window), static_cast<long>(message), number);
}

FilterGraph::News FilterGraph::takeEvents() {
    News news = News::None;
    long code = 0;
    LONG_PTR first = 0;
    LONG_PTR second = 0;
    while (SUCCEEDED(events_->GetEvent(&code, &first, &second, 0))) {
        if (code == EC_COMPLETE) news = News::Ended;
        if (code == EC_ERRORABORT) news = News::Aborted;
        events_->FreeEventParams(code, first, second);
    }
    return news;
}

/// A disabled child leaves the mouse to its parent, with the parent's own coordinates. The only child that another
/// thread owns is the video.
void FilterGraph::letMouseThrough() const {
    EnumChildWindows(
        host_,
        [](HWND child, LPARAM) {
            if (GetWindowThreadProcessId(child, nullptr) != GetCurrentThreadId()) EnableWindow(child, FALSE);
            return TRUE;
        },
        0);
}

void FilterGraph::show(HWND host, const RECT& area) {
    if (!video_) return;
    if (host == nullptr) {
        video_->put_Visible(OAFALSE);
        video_->put_Owner(0);
        host_ = nullptr;
        return;
    }
    if (host != host_) {
        video_->put_Owner(reinterpret_cast<OAHWND>(host));
        video_->put_WindowStyle(WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN);
        host_ = host;
        letMouseThrough();
    }
    const double width = area.right - area.left;
    const double height = area.bottom - area.top;
    const double scale = std::min(width / static_cast<double>(picture_.cx), height / static_cast<double>(picture_.cy));
    const long shownWidth = std::max(1L, std::lround(static_cast<double>(picture_.cx) * scale));
    const long shownHeight = std::max(1L, std::lround(static_cast<double>(picture_.cy) * scale));
    video_->SetWindowPosition(area.left + (area.right - area.left - shownWidth) / 2,
                              area.top + (area.bottom - area.top - shownHeight) / 2, shownWidth, shownHeight);
    video_->put_Visible(OATRUE);
}

}  // namespace corvane
