// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/windowing/bound_window.h"
#include "shell/windowing/surface.h"

namespace corvane {

/// Screens in memory: one of 1000 by 800 pixels with a bar of 30 on top, until a test says otherwise.
struct FakeScreens : Screens {
    double factor() const override { return scale; }
    Rectangle ofPanel() const override { return panelScreen; }
    Rectangle primary() const override { return all.empty() ? Rectangle() : all.front().shows; }
    std::vector<ScreenArea> areas() const override { return all; }

    double scale = 1;
    Rectangle panelScreen{0, 0, 1000, 800};
    std::vector<ScreenArea> all{{{0, 0, 1000, 800}, {0, 30, 1000, 770}}};
};

/// A surface in memory: does at once what it is told, and tells its window what a system would. Letters of labels are
/// 10 pixels wide.
class FakeDrawnSurface : public WindowFrame, public Surface, public MediaSurface {
public:
    // WindowFrame
    void activate() override { did("activate"); }
    void putAway() override;
    bool isShown() const override { return shown; }
    void refresh() override { did("refresh"); }
    int textWidth(const std::string& text) override { return static_cast<int>(text.size()) * 10; }
    void stack(int insertAfter, std::uint32_t flags) override;

    // Surface
    WindowFrame& frame() override { return *this; }
    void setCaption(const std::string& text) override { did("caption " + text); }
    void setUsable(bool isUsable) override { usable = isUsable; }
    void showUp() override;
    void showMinimised() override;
    void restore() override;
    bool isMinimised() const override { return iconic; }
    bool takesInput() const override { return usable && !boxUp; }
    bool isAltDown() const override { return altDown; }
    void takeKeyboard() override { did("keyboard"); }
    PixelPlace place() const override { return at; }
    void setPlace(const PixelPlace& place) override;
    void moveTo(PixelPoint corner) override;
    void placeWanted() override;
    bool isDrag(int across, int down) const override { return across * across + down * down >= 100; }
    bool dragBySystem() override;
    void letMouseGo() override { ++letGo; }
    void paintAnew(const PixelPlace& part) override;
    void paintAllAnew() override { did("paint all"); }
    void showRing(const Rectangle& place) override { ring = place; }
    double labelWidth(const std::string& text, double /*height*/) const override;
    bool labelFits(const std::string& text, double height, double width) const override;
    bool isOpaque(const Picture& picture) const override { return picture != glass; }
    void controlChanged(Control& control, PropertyId /*property*/) override { announced.push_back(control.name()); }
    void focusChanged() override { ++focusMoves; }
    void formGoes() override { did("form goes"); }
    void later(EventLoop::Handler handler) override { waiting.push_back(std::move(handler)); }

    // MediaSurface
    void setMovie(Control* control) override { movie = control; }
    void placeMovie(const Rectangle& area) override { movieAt = area; }
    void fillScreen(bool fill) override;
    std::optional<PixelSize> filled() const override { return whole; }
    bool canBePlaced(bool preparing) const override { return !shown || (!iconic && !preparing); }

    /// What was told to run later runs.
    void runLater();

    std::vector<std::string> told;       ///< what it did, in order
    std::vector<std::string> announced;  ///< controls whose changes were told to assistive programs
    PixelPlace at;
    bool shown = false;
    bool iconic = false;
    bool usable = true;
    bool boxUp = false;
    bool altDown = false;
    bool placesLater = false;  ///< as a desktop that gathers the changes of a form's place
    int placesWanted = 0;
    bool systemDrags = false;  ///< as a desktop whose windows cannot place themselves
    int letGo = 0;             ///< how often the pointer was let go
    int focusMoves = 0;
    Rectangle ring;
    Picture glass;  ///< one that shows what lies beneath
    Control* movie = nullptr;
    Rectangle movieAt;
    std::optional<PixelSize> whole;  ///< while it fills the screen
    std::vector<EventLoop::Handler> waiting;

private:
    void did(std::string what) { told.push_back(std::move(what)); }
};

/// Writes down what is drawn.
class FakeBrush final : public Brush {
public:
    void skin(const Picture& background, const std::vector<CompositionStep>& steps) override;
    void disc(const Rectangle& place, Colour colour, const std::vector<Rectangle>& covered) override;
    void text(const std::string& text, const Rectangle& place, Colour colour,
              const std::vector<Rectangle>& covered) override;
    void pictures(const std::vector<ShownPicture>& pictures) override { shown = pictures; }

    std::vector<std::string> drawn;
    std::vector<ShownPicture> shown;
};

/// "left top width height", rounded.
std::string toText(const Rectangle& place);

}  // namespace corvane
