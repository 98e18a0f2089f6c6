// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace corvane::test {

/// Where one known tone gives way to the next one.
struct Step {
    double seconds = 0;  ///< from the first sample
    int to = 0;          ///< number of the tone that begins
};

/// How much of a frequency is in some samples (Goertzel).
template <class Sample>
double strengthOf(const Sample* samples, std::size_t count, double hertz, int rate) {
    const double turn = 2 * M_PI * hertz / rate;
    const double twice = 2 * std::cos(turn);
    double last = 0, before = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double now = static_cast<double>(samples[i]) + twice * last - before;
        before = last;
        last = now;
    }
    return std::sqrt(std::max(0.0, last * last + before * before - twice * last * before));
}

/// Which of the tones is in the window, -1: none.
template <class Sample>
int toneIn(const Sample* window, std::size_t count, int rate, const std::vector<double>& tones) {
    double most = 0, all = 0;
    int best = -1;
    for (std::size_t i = 0; i < count; ++i) all += std::abs(static_cast<double>(window[i]));
    for (std::size_t tone = 0; tone < tones.size(); ++tone) {
        const double found = strengthOf(window, count, tones[tone], rate);
        if (found <= most) continue;
        most = found;
        best = static_cast<int>(tone);
    }
    return most > 0.3 * all ? best : -1;
}

/// The steps from each tone to the one after it, to a few milliseconds. Tones: hertz, upwards. Only what lasts for 50
/// ms counts as a tone: one that rings out makes others seem to come and go.
template <class Sample>
std::vector<Step> stepsIn(const std::vector<Sample>& samples, int rate, const std::vector<double>& tones) {
    constexpr int kLasts = 25;  // hops of 2 ms
    const auto window = static_cast<std::size_t>(rate / 50), hop = static_cast<std::size_t>(rate / 500);
    std::vector<Step> steps;
    int current = -1, seen = -1, count = 0;
    for (std::size_t at = 0; at + window <= samples.size(); at += hop) {
        const int tone = toneIn(samples.data() + at, window, rate, tones);
        count = tone == seen ? count + 1 : 1;
        seen = tone;
        if (count != kLasts || tone == current) continue;
        // In the middle of the first window as much of the one is heard as of the other.
        const std::size_t first = at - hop * static_cast<std::size_t>(kLasts - 1);
        if (current >= 0 && tone == current + 1)
            steps.push_back({static_cast<double>(first + window / 2) / rate, tone});
        current = tone;
    }
    return steps;
}

}  // namespace corvane::test
