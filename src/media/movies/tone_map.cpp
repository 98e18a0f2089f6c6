// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/tone_map.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace corvane {

namespace {

constexpr double kMostLight = 10'000;    ///< candelas per square metre that ST 2084 can say
constexpr double kUsualLight = 1'000;    ///< of the screens that films are made on, and of HLG's reference screen
constexpr double kScreenGamma = 2.4;     ///< of an ordinary screen (ITU-R BT.1886)
constexpr double kHlgSystemGamma = 1.2;  ///< at 1,000 candelas (ITU-R BT.2100)
constexpr std::size_t kSignals = 4'096;
constexpr std::size_t kSteps = 65'536;

// SMPTE ST 2084
constexpr double kM1 = 2610.0 / 16384, kM2 = 2523.0 / 4096 * 128, kC1 = 3424.0 / 4096, kC2 = 2413.0 / 4096 * 32,
                 kC3 = 2392.0 / 4096 * 32;

double pqLight(double signal) {
    const double power = std::pow(signal, 1 / kM2);
    return kMostLight * std::pow(std::max(power - kC1, 0.0) / (kC2 - kC3 * power), 1 / kM1);
}

double pqSignal(double light) {
    const double power = std::pow(light / kMostLight, kM1);
    return std::pow((kC1 + kC2 * power) / (1 + kC3 * power), kM2);
}

/// ARIB STD-B67: the scene's light, 0 to 1.
double hlgLight(double signal) {
    constexpr double a = 0.17883277, b = 0.28466892, c = 0.55991073;
    return signal <= 0.5 ? signal * signal / 3 : (std::exp((signal - c) / a) + b) / 12;
}

/// The curve of ITU-R BT.2390: up to a knee as it was, then rolled off so that the peak becomes the screen's white.
/// Both in candelas per square metre.
double rolledOff(double light, double peak) {
    if (peak <= ToneMap::kWhite) return light;
    const double most = pqSignal(peak);
    const double white = pqSignal(ToneMap::kWhite) / most;
    const double knee = std::max(1.5 * white - 0.5, 0.0);
    const double signal = std::min(pqSignal(light) / most, 1.0);
    if (signal < knee) return light;
    const double t = (signal - knee) / (1 - knee), t2 = t * t, t3 = t2 * t;
    const double rolled = (2 * t3 - 3 * t2 + 1) * knee + (t3 - 2 * t2 + t) * (1 - knee) + (-2 * t3 + 3 * t2) * white;
    return pqLight(rolled * most);
}

std::size_t step(float share) {
    return static_cast<std::size_t>(std::clamp(share, 0.0F, 1.0F) * static_cast<float>(kSteps - 1) + 0.5F);
}

}  // namespace

ToneMap::ToneMap(const FilmLight& light)
    : hlg_(light.transfer == FilmLight::Transfer::Hlg),
      wide_(light.wide),
      light_(kSignals),
      gain_(kSteps),
      encoded_(kSteps) {
    double most = light.peak * kWhite;
    if (hlg_ || !(most >= kWhite && most <= kMostLight)) most = kUsualLight;
    for (std::size_t i = 0; i < kSignals; ++i) {
        const double signal = static_cast<double>(i) / (kSignals - 1);
        light_[i] = static_cast<float>(hlg_ ? hlgLight(signal) : std::min(pqLight(signal) / most, 1.0));
    }
    for (std::size_t i = 0; i < kSteps; ++i) {
        const double share = static_cast<double>(std::max<std::size_t>(i, 1)) / (kSteps - 1);
        gain_[i] = static_cast<float>(rolledOff(share * most, most) / kWhite / share);
        encoded_[i] = static_cast<std::uint8_t>(
            std::lround(255 * std::pow(static_cast<double>(i) / (kSteps - 1), 1 / kScreenGamma)));
    }
    if (!hlg_) return;
    scene_.resize(kSteps);
    for (std::size_t i = 0; i < kSteps; ++i)
        scene_[i] = static_cast<float>(std::pow(static_cast<double>(i) / (kSteps - 1), kHlgSystemGamma - 1));
}

void ToneMap::map(const std::uint8_t* from, std::size_t fromLine, std::uint8_t* to, std::size_t toLine, int width,
                  int height) const {
    for (int y = 0; y < height; ++y, from += fromLine, to += toLine) {
        const std::uint8_t* pixel = from;
        std::uint8_t* made = to;
        for (int x = 0; x < width; ++x, pixel += 8, made += 4) {
            std::array<std::uint16_t, 3> signal{};
            std::memcpy(signal.data(), pixel, sizeof signal);
            float red = light_[signal[0] >> 4U], green = light_[signal[1] >> 4U], blue = light_[signal[2] >> 4U];
            if (hlg_) {
                const float scene = scene_[step(0.2627F * red + 0.6780F * green + 0.0593F * blue)];
                red *= scene, green *= scene, blue *= scene;
            }
            // By the brightest channel, so that colours keep their hue.
            const float gain = gain_[step(std::max({red, green, blue}))];
            red *= gain, green *= gain, blue *= gain;
            if (wide_) {
                // From the colours of BT.2020 to those of BT.709 (ITU-R BT.2087); what the screen has not is cut off.
                const float r = red, g = green, b = blue;
                red = 1.6605F * r - 0.5876F * g - 0.0728F * b;
                green = -0.1246F * r + 1.1329F * g - 0.0083F * b;
                blue = -0.0182F * r - 0.1006F * g + 1.1187F * b;
            }
            made[0] = encoded_[step(blue)];
            made[1] = encoded_[step(green)];
            made[2] = encoded_[step(red)];
            made[3] = 255;
        }
    }
}

}  // namespace corvane
