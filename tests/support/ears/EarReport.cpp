// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ears/EarReport.h"

#include "support/ears/ToneCode.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace velarin::test {
namespace {

constexpr double hop = 0.01;
// Under this mean power a hop is silent: about -54 dB.
constexpr double silencePower = 4e-6;
// Smaller deviations are the ear's own.
constexpr double smallestJump = 0.025;
// Tones lie under 4,600 Hz.
constexpr int decimation = 4;

struct Hop
{
    bool isSilent{ true };
    std::optional<int> step;
};

// A change from one step of the programme to the next: the only moments at which the place is known exactly.
struct Mark
{
    // Of sound: silence does not count.
    double sounding{ 0.0 };
    double recorded{ 0.0 };
    double programme{ 0.0 };
    double offset() const { return programme - sounding; }
};

std::vector<float> decimated(std::span<const float> samples)
{
    std::vector<float> fewer(samples.size() / decimation);
    for (std::size_t index = 0; index < fewer.size(); ++index) {
        float sum = 0.0F;
        for (std::size_t part = 0; part < decimation; ++part)
            sum += samples[index * decimation + part];
        fewer[index] = sum / decimation;
    }
    return fewer;
}

std::span<const float> windowAt(std::span<const float> samples, double center, double length, double rate)
{
    const double first = std::clamp((center - length / 2) * rate, 0.0, static_cast<double>(samples.size()));
    const double last = std::clamp((center + length / 2) * rate, first, static_cast<double>(samples.size()));
    return samples.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first));
}

bool isSilent(std::span<const float> samples)
{
    double sum = 0.0;
    for (const float sample : samples)
        sum += static_cast<double>(sample) * sample;
    return sum <= silencePower * static_cast<double>(samples.size());
}

std::vector<Hop> hopsOf(std::span<const float> samples, double rate)
{
    std::vector<Hop> hops(static_cast<std::size_t>(static_cast<double>(samples.size()) / rate / hop));
    for (std::size_t index = 0; index < hops.size(); ++index) {
        const double center = (static_cast<double>(index) + 0.5) * hop;
        hops[index].isSilent = isSilent(windowAt(samples, center, hop, rate));
        if (!hops[index].isSilent)
            hops[index].step = ToneCode::recognise(windowAt(samples, center, ToneCode::windowSeconds, rate), rate);
    }
    return hops;
}

void measureSilence(const std::vector<Hop>& hops, EarReport& report)
{
    double silence = 0.0;
    for (std::size_t index = 0; index < hops.size(); ++index) {
        if (hops[index].isSilent) {
            silence += hop;
            continue;
        }
        if (!report.firstSound)
            report.firstSound = static_cast<double>(index) * hop;
        else
            report.longestGap = std::max(report.longestGap, silence);
        silence = 0.0;
        report.heard += hop;
        report.lastSound = static_cast<double>(index + 1) * hop;
    }
    report.longestSilence = report.firstSound ? std::max(report.longestGap, silence) : 0.0;
}

std::vector<Mark> marksOf(const std::vector<Hop>& hops)
{
    std::vector<Mark> marks;
    double sounding = 0.0;
    std::optional<int> before;
    double beforeAt = 0.0;
    for (std::size_t index = 0; index < hops.size(); ++index) {
        if (!hops[index].isSilent)
            sounding += hop;
        if (!hops[index].step)
            continue;
        const int step = *hops[index].step;
        if (before && step == (*before + 1) % ToneCode::stepCount && sounding - beforeAt < 5 * hop)
            marks.push_back(
                { (sounding - hop + beforeAt) / 2, static_cast<double>(index) * hop, step * ToneCode::stepSeconds });
        before = step;
        beforeAt = sounding;
    }
    return marks;
}

void measureJumps(const std::vector<Mark>& marks, EarReport& report)
{
    if (marks.empty())
        return;
    double level = marks.front().offset();
    for (std::size_t index = 1; index < marks.size(); ++index) {
        if (std::abs(marks[index].offset() - level) < smallestJump) {
            level += 0.1 * (marks[index].offset() - level);
            continue;
        }
        // The step in which it happens is cut, and its mark is not quite where it belongs: the next one tells.
        const Mark& next = marks[std::min(index + 1, marks.size() - 1)];
        const double jump = next.offset() - level;
        if (std::abs(jump) < smallestJump)
            continue;
        report.jumps.push_back({ marks[index].recorded, jump });
        (jump > 0 ? report.lost : report.repeated) += std::abs(jump);
        level = next.offset();
    }
}

void listSeconds(const std::vector<Mark>& marks, EarReport& report)
{
    for (const Mark& mark : marks) {
        const int second = static_cast<int>(std::floor(mark.programme + ToneCode::stepSeconds / 2));
        if (report.secondsHeard.empty() || report.secondsHeard.back() != second)
            report.secondsHeard.push_back(second);
    }
}

}

EarReport judge(std::span<const float> samples, int framesPerSecond)
{
    EarReport report;
    report.recorded = static_cast<double>(samples.size()) / framesPerSecond;
    for (std::size_t index = 1; index < samples.size(); ++index)
        report.steepest = std::max(report.steepest, std::abs(static_cast<double>(samples[index]) - samples[index - 1]));
    const std::vector<Hop> hops = hopsOf(decimated(samples), static_cast<double>(framesPerSecond) / decimation);
    measureSilence(hops, report);
    const std::vector<Mark> marks = marksOf(hops);
    measureJumps(marks, report);
    listSeconds(marks, report);
    return report;
}

QJsonObject EarReport::toJson() const
{
    QJsonArray jumpList;
    for (const Jump& jump : jumps)
        jumpList.append(QJsonObject{ { QStringLiteral("at"), jump.at }, { QStringLiteral("seconds"), jump.seconds } });
    QJsonArray secondList;
    for (const int second : secondsHeard)
        secondList.append(second);
    const auto orNull = [](std::optional<double> value) { return value ? QJsonValue(*value) : QJsonValue(); };
    return { { QStringLiteral("recorded"), recorded }, { QStringLiteral("firstSound"), orNull(firstSound) },
        { QStringLiteral("lastSound"), orNull(lastSound) }, { QStringLiteral("heard"), heard },
        { QStringLiteral("longestGap"), longestGap }, { QStringLiteral("longestSilence"), longestSilence },
        { QStringLiteral("lost"), lost }, { QStringLiteral("repeated"), repeated },
        { QStringLiteral("jumps"), jumpList }, { QStringLiteral("secondsHeard"), secondList },
        { QStringLiteral("steepest"), steepest } };
}

}
