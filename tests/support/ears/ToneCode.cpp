// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ears/ToneCode.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace velarin::test {
namespace {

constexpr double firstFrequency = 300.0;
constexpr double toneDistance = 80.0;
constexpr double digitDistance = 1400.0;
// A tone must stand out of its band by this factor of power.
constexpr double clearness = 2.0;

// Goertzel's filter: the power of one frequency.
double power(std::span<const float> samples, double cyclesPerSample)
{
    const double coefficient = 2.0 * std::cos(2.0 * std::numbers::pi * cyclesPerSample);
    double last = 0.0;
    double beforeLast = 0.0;
    for (const float sample : samples) {
        const double next = sample + coefficient * last - beforeLast;
        beforeLast = last;
        last = next;
    }
    return last * last + beforeLast * beforeLast - coefficient * last * beforeLast;
}

std::vector<float> faded(std::span<const float> window)
{
    std::vector<float> samples(window.begin(), window.end());
    const auto count = static_cast<double>(samples.size());
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const double phase = 2.0 * std::numbers::pi * (static_cast<double>(index) + 0.5) / count;
        samples[index] *= static_cast<float>(0.5 - 0.5 * std::cos(phase));
    }
    return samples;
}

std::optional<int> loudestTone(std::span<const float> samples, double framesPerSecond, int digit)
{
    int best = 0;
    double bestPower = 0.0;
    double secondPower = 0.0;
    for (int tone = 0; tone < ToneCode::tonesPerDigit; ++tone) {
        const double found = power(samples, ToneCode::frequency(digit, tone) / framesPerSecond);
        if (found > bestPower) {
            secondPower = bestPower;
            bestPower = found;
            best = tone;
        } else {
            secondPower = std::max(secondPower, found);
        }
    }
    return bestPower > clearness * secondPower ? std::optional(best) : std::nullopt;
}

}

double ToneCode::frequency(int digit, int tone)
{
    return firstFrequency + digit * digitDistance + tone * toneDistance;
}

int ToneCode::digitOf(int step, int digit)
{
    return (step >> (4 * digit)) % tonesPerDigit;
}

std::optional<int> ToneCode::recognise(std::span<const float> window, double framesPerSecond)
{
    const std::vector<float> samples = faded(window);
    int step = 0;
    for (int digit = 0; digit < digits; ++digit) {
        const auto tone = loudestTone(samples, framesPerSecond, digit);
        if (!tone)
            return std::nullopt;
        step += *tone << (4 * digit);
    }
    return step;
}

}
