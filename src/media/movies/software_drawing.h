// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "media/movies/tone_map.h"
#include "pictures/picture_budget.h"

struct mpv_handle;
struct mpv_render_context;

namespace corvane {

/// Has one player's frames drawn by software into memory, in any size. Used on the user-interface thread, but for what
/// announces.
class SoftwareDrawing {
public:
    /// What memory must be for frames to be drawn into it: first byte and line begin at a multiple of this.
    static constexpr std::size_t kAlignment = 64;
    static constexpr std::size_t kPixelBytes = 4;  ///< of a drawn one: 0x??RRGGBB in the processor's order

    /// announce: called on any thread when update() should be called soon.
    SoftwareDrawing(mpv_handle* player, std::function<void()> announce);
    SoftwareDrawing(const SoftwareDrawing&) = delete;
    SoftwareDrawing& operator=(const SoftwareDrawing&) = delete;
    ~SoftwareDrawing();  ///< end() was called before, unless it draws nothing

    bool draws() const { return context_ != nullptr; }  ///< false: the library makes nothing of the kind
    void hush();
    /// Draws nothing any more; the player's picture has ended.
    void end();
    /// The picture's own size; empty: none.
    void setPicture(PictureSize pixels) { picture_ = pixels; }
    /// How the film's light is meant; none: as ordinary screens show it.
    void setLight(const std::optional<FilmLight>& light);
    /// Looks for the next frame. True: there is one.
    bool update();
    /// A frame that is not taken in time holds the player up: taken without being drawn.
    void skip() { drawInto(nullptr, 0, {}); }

    /// Draws the frame into memory of its own, which stays until it is drawn in another size. False: it cannot.
    bool draw(PictureSize pixels);
    PictureSize drawn() const { return drawn_; }  ///< of the memory; empty: none
    std::uint8_t* lines() { return lines_.get(); }
    std::size_t line() const;  ///< bytes from one to the next
    /// Draws it there; false: it cannot.
    bool drawInto(std::uint8_t* first, std::size_t line, PictureSize pixels);
    /// Whether drawInto() shows the film's light as it is meant.
    bool drawsAnywhere() const { return !toneMap_; }
    std::chrono::milliseconds took() const { return took_; }  ///< the last drawing

private:
    using Bytes = std::unique_ptr<std::uint8_t, void (*)(void*)>;
    static Bytes linesOf(std::size_t bytes);
    bool drawDeep();
    void chooseScaler(PictureSize pixels);
    bool render(char* format, std::uint8_t* lines, std::size_t line, PictureSize pixels);

    mpv_handle* player_;
    std::function<void()> announce_;
    mpv_render_context* context_ = nullptr;
    std::optional<FilmLight> light_;
    std::optional<ToneMap> toneMap_;  ///< of a film that means its light otherwise than the screen
    Bytes deep_;                      ///< its picture as the library draws it: 16 bits a channel
    Bytes lines_;
    PictureSize picture_, drawn_;
    std::optional<bool> shrunk_;  ///< the library was told last that frames are made smaller
    std::chrono::milliseconds took_{0};
};

}  // namespace corvane
