// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/skin_builder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "panel/skin_records.h"

namespace corvane {

namespace {

constexpr std::size_t kMostSkinTextBytes = 4 * 1024 * 1024;
constexpr int kDefaultPanelWidth = 512;
constexpr int kDefaultPanelHeight = 128;
constexpr int kMostPanelPixels = 4096;  ///< a side; a larger window would need absurd memory
constexpr int kLabelHeight = 16;        ///< pixels, where the record gives none
constexpr int kTwips = static_cast<int>(kTwipsPerPixel);
constexpr int kIndicatorHalf = 45;  ///< twips
constexpr int kKnobRim = 60;        ///< twips between the indicator and the knob's edge

enum class Fills { Nothing, Window, Button, PressedButton, Box, Image, StoredImage, Label, WideLabel, Slider };

/// What a record fills. Pictures of indicators and lamps are also kept in stored images.
struct Target {
    Fills fills = Fills::Nothing;
    int index = 0;
    int stored = -1;  ///< image that keeps a copy of the picture
};

constexpr std::array<Target, kLastRecord + 1> kTargets = {{
    {},
    {Fills::Window},
    {Fills::Button, kPower},
    {Fills::PressedButton, kPower},
    {Fills::Button, kMinimise},
    {Fills::Button, kRepeat, kRepeatOffImage},
    {Fills::PressedButton, kRepeat, kRepeatOnImage},
    {Fills::Button, kShuffle},
    {Fills::Button, kPlay},
    {Fills::PressedButton, kPlay},
    {Fills::Button, kPause},
    {Fills::PressedButton, kPause},
    {Fills::Button, kStop},
    {Fills::Button, kPrev},
    {Fills::PressedButton, kPrev},
    {Fills::Button, kNext},
    {Fills::PressedButton, kNext},
    {Fills::Button, kEditor},
    {Fills::PressedButton, kEditor},
    {Fills::Button, kVolumeDown},
    {Fills::Button, kVolumeUp},
    {Fills::Box},
    {Fills::Image, 7},
    {Fills::Image, 8},
    {Fills::Image, kKnobImage},
    {Fills::Image, kIndicatorImage, kIndicatorImage + 1},
    {Fills::StoredImage, kIndicatorImage + 2},
    {Fills::StoredImage, kIndicatorImage + 3},
    {Fills::Label, kMarkLabel},
    {Fills::Label, kTotalLabel},
    {Fills::Label, kNumberLabel},
    {Fills::Label, kTimeLabel},
    {Fills::WideLabel, kTextLabel},
    {Fills::WideLabel, kTitleLabel},
    {Fills::Image, kAutoPlayLamp, kAutoPlayLamp + 1},
    {Fills::StoredImage, kAutoPlayLamp + 2},
    {Fills::Image, kQuickPlayLamp, kQuickPlayLamp + 1},
    {Fills::StoredImage, kQuickPlayLamp + 2},
    {Fills::Image, kRepeatLamp, kRepeatLamp + 1},
    {Fills::StoredImage, kRepeatLamp + 2},
    {Fills::Slider},
}};

Target target(const SkinRecord& record) { return kTargets[static_cast<std::size_t>(record.number)]; }

bool needsPicture(const SkinRecord& record) {
    const Fills fills = target(record).fills;
    return record.used && fills != Fills::Label && fills != Fills::WideLabel && fills != Fills::Slider;
}

bool liesInside(const SkinRecord& record, const Picture& bitmap) {
    return record.clipX >= 0 && record.clipY >= 0 && record.width > 0 && record.height > 0 &&
           record.clipX + record.width <= bitmap.width() && record.clipY + record.height <= bitmap.height();
}

Pictures::Cell cell(const SkinRecord& record) { return {record.clipX, record.clipY, record.width, record.height}; }

Twips twips(int pixels) { return static_cast<float>(pixels) * kTwipsPerPixel; }

std::int16_t shortTwips(int length) {
    return static_cast<std::int16_t>(std::clamp<int>(length, 0, std::numeric_limits<std::int16_t>::max()));
}

void place(Control& control, const SkinRecord& record) { control.Move(twips(record.left), twips(record.top)); }

void fit(Control& control, const SkinRecord& record) {
    control.SetSize(twips(record.width), twips(record.height));
    place(control, record);
    control.Visible = true;
}

/// Applies records to one panel.
class Builder {
public:
    Builder(Player& player, MainPanelControls& panel) : player_(player), panel_(panel) {}

    /// picture: what the record names; empty for texts and the slider.
    void apply(const SkinRecord& record, const Picture& picture) {
        const Target what = target(record);
        switch (what.fills) {
            case Fills::Window:
                applyWindow(record, picture);
                break;
            case Fills::Button:
            case Fills::PressedButton:
                applyButton(record, what, picture);
                break;
            case Fills::Box:
                fit(panel_.pctMainPanel, record);
                panel_.pctMainPanel.Picture = picture;
                break;
            case Fills::Image:
                applyImage(record, what.index, picture);
                break;
            case Fills::StoredImage:
                image(what.index).Picture = picture;
                break;
            case Fills::Label:
            case Fills::WideLabel:
                applyLabel(record, what.index);
                break;
            case Fills::Slider:
                applySlider(record);
                break;
            case Fills::Nothing:
                break;
        }
        if (what.stored >= 0) image(what.stored).Picture = picture;
    }

    void hide(const SkinRecord& record) {
        const Target what = target(record);
        const auto index = static_cast<std::size_t>(what.index);
        switch (what.fills) {
            case Fills::Button:
            case Fills::PressedButton:
                panel_.cmdMainPanel[index].Visible = false;
                break;
            case Fills::Box:
                panel_.pctMainPanel.Visible = false;
                break;
            case Fills::Image:
            case Fills::StoredImage:
                image(what.index).Visible = false;
                break;
            case Fills::Label:
            case Fills::WideLabel:
                panel_.lblMainPanel[index].Visible = false;
                break;
            case Fills::Slider:
                panel_.pctSlide.Visible = false;
                break;
            case Fills::Window:  // a panel without a background is still a panel
            case Fills::Nothing:
                break;
        }
        if (what.index == kKnobImage && what.fills == Fills::Image) panel_.shpVolume.Visible = false;
    }

private:
    Image& image(int index) { return panel_.imgMainPanel[static_cast<std::size_t>(index)]; }

    void applyWindow(const SkinRecord& record, const Picture& picture) {
        place(panel_, record);
        panel_.Picture = picture;
    }

    void applyButton(const SkinRecord& record, const Target& what, const Picture& picture) {
        CommandButton& button = panel_.cmdMainPanel[static_cast<std::size_t>(what.index)];
        fit(button, record);
        (what.fills == Fills::Button ? button.Picture : button.DownPicture) = picture;
    }

    void applyImage(const SkinRecord& record, int index, const Picture& picture) {
        fit(image(index), record);
        image(index).Picture = picture;
        if (index != kKnobImage) return;
        const int width = record.width * kTwips;
        const int height = record.height * kTwips;
        player_.gVolumeX = shortTwips(width / 2);
        player_.gVolumeY = shortTwips(height / 2);
        player_.gVolumeRadius = shortTwips(std::min(width, height) / 2 - kIndicatorHalf - kKnobRim);
        panel_.shpVolume.Visible = true;
    }

    void applyLabel(const SkinRecord& record, int index) {
        Label& label = panel_.lblMainPanel[static_cast<std::size_t>(index)];
        place(label, record);
        if (record.width > 0) label.Width = twips(record.width);
        label.Height = twips(record.height > 0 ? record.height : kLabelHeight);
        if (const auto colour = skinColour(record.use)) label.ForeColor = *colour;
        label.Visible = true;
    }

    void applySlider(const SkinRecord& record) {
        PictureBox& slider = panel_.pctSlide;
        place(slider, record);
        slider.SetSize(kTwipsPerPixel, twips(record.height));
        if (const auto colour = skinColour(record.use)) slider.BackColor = *colour;
        slider.Visible = true;
        player_.gSlideWidth = std::max(record.width, 0) * kTwips;
        slider.hitWidth = static_cast<float>(player_.gSlideWidth);
    }

    Player& player_;
    MainPanelControls& panel_;
};

/// The last record of each number, in the order of their lines: what applying all of them would leave, without cutting
/// a picture for each of a million lines. Empty: a record is malformed or its cell lies outside the bitmap.
std::optional<std::vector<SkinRecord>> lastRecords(std::string_view text, const Picture& bitmap) {
    std::array<std::optional<SkinRecord>, kLastRecord + 1> last;
    std::map<std::size_t, int> order;  // line to number
    std::array<std::size_t, kLastRecord + 1> lines{};
    SkinRecords records(text);
    for (std::size_t line = 1; auto record = records.next(1, kLastRecord); ++line) {
        if (needsPicture(*record) && !liesInside(*record, bitmap)) return std::nullopt;
        const auto number = static_cast<std::size_t>(record->number);
        order.erase(lines[number]);
        order[line] = record->number;
        lines[number] = line;
        last[number] = std::move(*record);
    }
    if (records.failed()) return std::nullopt;
    std::vector<SkinRecord> result;
    for (const auto& each : order) result.push_back(std::move(*last[static_cast<std::size_t>(each.second)]));
    return result;
}

}  // namespace

void readPanelRecord(Player& player, Image& background) {
    player.gPanelWidth = kDefaultPanelWidth;
    player.gPanelHeight = kDefaultPanelHeight;
    const auto text = player.ports.files.read(player.gTextPath, kMostSkinTextBytes);
    if (!text) return;
    const auto record = SkinRecords(*text).next(kPanelRecord, kPanelRecord);
    if (!record || std::min(record->width, record->height) < 1) return;
    if (std::max(record->width, record->height) > kMostPanelPixels) return;
    player.gPanelWidth = record->width;
    player.gPanelHeight = record->height;

    const auto* menu = player.forms.find<MenuWindowControls>();
    if (!record->used || menu == nullptr) return;
    const Picture picture = player.ports.pictures.cut(menu->pcpMainPanel.Picture, cell(*record));
    if (picture.empty()) return;
    background.Picture = picture;
    place(background, *record);
}

bool buildPanel(Player& player, MainPanelControls& panel) {
    const auto* menu = player.forms.find<MenuWindowControls>();
    const auto text = player.ports.files.read(player.gTextPath, kMostSkinTextBytes);
    if (!text || menu == nullptr) return false;
    const Picture bitmap = menu->pcpMainPanel.Picture;
    const auto records = lastRecords(*text, bitmap);
    if (!records) return false;

    Builder builder(player, panel);
    for (const SkinRecord& record : *records) {
        Picture picture;
        if (needsPicture(record)) {
            picture = player.ports.pictures.cut(bitmap, cell(record));
            if (picture.empty()) return false;
        }
        if (record.used) {
            builder.apply(record, picture);
        } else {
            builder.hide(record);
        }
    }
    return true;
}

}  // namespace corvane
