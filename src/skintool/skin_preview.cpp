// SPDX-License-Identifier: GPL-3.0-or-later
#include "skintool/skin_preview.h"

#include "engine/mdlPublicFunction.h"
#include "linux/pictures/qt_pictures.h"
#include "linux/qt_loop.h"
#include "linux/windowing/media_canvas.h"
#include "panel/skin_builder.h"
#include "shell/windowing/make_drawn.h"

namespace corvane {

namespace {

constexpr std::int16_t kRestVolume = 7, kFullVolume = 15;
constexpr int kIndicatorPhases = 3;

/// A panel that wears the skin, with no player behind it.
class DressedPanel {
public:
    DressedPanel(const Skin& skin, double scale)
        : background_(&opening_, "imgDummyPanel"),
          context_(loop_, scale),
          window_(makeDrawn<CanvasWindow, MediaCanvas>(panel_, context_)) {
        applyPanelRecord(*skin.text, skin.bitmap, pictures_, state_, background_);
        applied_ = applySkin(*skin.text, skin.bitmap, pictures_, state_, panel_);
        panel_.SetSize(static_cast<float>(state_.gPanelWidth) * kTwipsPerPixel,
                       static_cast<float>(state_.gPanelHeight) * kTwipsPerPixel);
        window_->bind();
        rest();
    }

    bool applied() const { return applied_; }

    QImage grab() {
        return static_cast<CanvasWindow&>(window_->surface()).grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    /// What grows at the start; null: the skin gives none.
    QImage opening(double scale) const {
        const QImage picture = imageOf(background_.Picture);
        return picture.isNull()
                   ? picture
                   : picture.scaled(picture.size() * scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }

    void rest() {
        say("012", "001", "00:00", "Corvane  Ver 100  Multimedia Player", "Chime");
        volume(kRestVolume);
    }

    void playing(int phase) {
        say("256", "007", "02:48", "Quick Time File Now On Play", "An evening at the harbour");
        image(kIndicatorImage).Picture = image(kIndicatorImage + 1 + phase).Picture;
        panel_.pctSlide.Width =
            static_cast<float>(state_.gSlideWidth) * static_cast<float>(phase + 1) / kIndicatorPhases;
    }

    void lampsLit() {
        for (const int lamp : {kAutoPlayLamp, kQuickPlayLamp, kRepeatLamp}) {
            mdlPublicFunction::lightLamp(panel_, lamp, true);
        }
        panel_.cmdMainPanel[kRepeat].Picture = image(kRepeatOnImage).Picture;
    }

    void buttonsPressed() {
        for (CommandButton& button : panel_.cmdMainPanel) {
            if (!button.DownPicture.get().empty()) button.Picture = button.DownPicture;
        }
    }

    void volume(std::int16_t level) {
        state_.gVolume = level;
        mdlPublicFunction::placeIndicator(state_, panel_);
    }

private:
    Image& image(int index) { return panel_.imgMainPanel[static_cast<std::size_t>(index)]; }

    void say(const char* total, const char* number, const char* time, const char* kind, const char* title) {
        panel_.lblMainPanel[kTotalLabel].Caption = total;
        panel_.lblMainPanel[kNumberLabel].Caption = number;
        panel_.lblMainPanel[kTimeLabel].Caption = time;
        panel_.lblMainPanel[kTextLabel].Caption = kind;
        panel_.lblMainPanel[kTitleLabel].Caption = title;
    }

    QtPictures pictures_;
    QtLoop loop_;
    mdlDefinePublic::PlayerState state_;
    Form opening_{"opening", FormStyle::Painted};
    Image background_;
    MainPanelControls panel_;
    DesktopContext context_;
    std::unique_ptr<DrawnWindow> window_;
    bool applied_ = false;
};

}  // namespace

std::vector<std::pair<std::string, QImage>> previewSkin(const Skin& skin, double scale) {
    if (!skin.text || skin.bitmap.empty()) return {};
    const auto shown = [&](auto&& change) {
        DressedPanel panel(skin, scale);
        change(panel);
        return panel.applied() ? panel.grab() : QImage();
    };
    std::vector<std::pair<std::string, QImage>> states;
    states.emplace_back("rest", shown([](DressedPanel& /*panel*/) {}));
    if (states.front().second.isNull()) return {};
    const QImage opening = DressedPanel(skin, scale).opening(scale);
    if (!opening.isNull()) states.emplace_back("opening", opening);
    for (int phase = 0; phase < kIndicatorPhases; ++phase) {
        states.emplace_back("playing-" + std::to_string(phase + 1),
                            shown([phase](DressedPanel& panel) { panel.playing(phase); }));
    }
    states.emplace_back("lamps-lit", shown([](DressedPanel& panel) { panel.lampsLit(); }));
    states.emplace_back("pressed", shown([](DressedPanel& panel) { panel.buttonsPressed(); }));
    states.emplace_back("volume-lowest", shown([](DressedPanel& panel) { panel.volume(0); }));
    states.emplace_back("volume-full", shown([](DressedPanel& panel) { panel.volume(kFullVolume); }));
    return states;
}

}  // namespace corvane
