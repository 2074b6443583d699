// SPDX-License-Identifier: GPL-3.0-or-later
// Stations of real segments, by ear: real servers, the real thread, a real sound server.
#include "live/ears/SideBySide.h"
#include "live/hls/SegmentStation.h"
#include "support/server/Answers.h"
#include "support/server/TestAuthority.h"

#include <gtest/gtest.h>

namespace velarin::test {

namespace {

constexpr double programmeSeconds = 70.0;
constexpr double segmentSeconds = 4.0;
// Another variant sounds as the programme does so much later.
constexpr double otherVariant = 100.0;

const Segments& programme(SegmentKind kind = SegmentKind::TransportAac, double from = 0.0)
{
    return Segments::of(kind, from, programmeSeconds, segmentSeconds);
}

SegmentStation::Setup stationOf(SegmentKind kind = SegmentKind::TransportAac)
{
    return { .variants = { { "a", { &programme(kind) } } } };
}

struct Case
{
    std::string name;
    SegmentStation::Setup setup;
    QByteArray target{ "/a/list.m3u8" };
};

// Listens to up to four stations side by side.
std::map<std::string, Heard> hear(const std::vector<Case>& cases, double seconds)
{
    struct Seat
    {
        Seat(const Case& what, int device)
            : station(what.setup)
            , listening(device)
        {
        }
        SegmentStation station;
        Listening listening;
    };
    std::vector<std::unique_ptr<Seat>> seats;
    for (const Case& what : cases)
        seats.push_back(std::make_unique<Seat>(what, static_cast<int>(seats.size())));
    for (std::size_t index = 0; index < cases.size(); ++index)
        seats[index]->listening.play(seats[index]->station.url(cases[index].target));
    listenFor(seconds);
    std::map<std::string, Heard> results;
    for (std::size_t index = 0; index < cases.size(); ++index) {
        Seat& seat = *seats[index];
        results[cases[index].name] = { seat.listening.heard(), seat.listening.events,
            seat.station.server().requests() };
    }
    return results;
}

int numberOf(const ServerRequest& request)
{
    bool isNumber = false;
    const int number = request.path.mid(request.path.lastIndexOf('/') + 1).toInt(&isNumber);
    return isNumber ? number : -1;
}

}

TEST(HlsEarsTest, eachKindOfSegmentIsHeardAtOnceWholeAndOnce)
{
    const auto results = hear({ { "transport stream, AAC", stationOf(SegmentKind::TransportAac) },
                                  { "transport stream, MP3", stationOf(SegmentKind::TransportMp3) },
                                  { "packed AAC", stationOf(SegmentKind::PackedAac) },
                                  { "fragmented MP4", stationOf(SegmentKind::FragmentedMp4) } },
        14.0);
    for (const auto& [name, heard] : results) {
        SCOPED_TRACE(name + inFigures(heard));
        testing::Test::RecordProperty(name, inFigures(heard));
        ASSERT_TRUE(heard.report.firstSound.has_value());
        EXPECT_LE(*heard.report.firstSound, 0.3);
        EXPECT_GE(heard.report.heard, 13.0);
        EXPECT_LE(heard.report.longestGap, 0.02);
        EXPECT_LE(heard.report.lost + heard.report.repeated, 0.05);
    }
}

TEST(HlsEarsTest, faultsOfListsAndSegmentsCostWhatTheyMustAndNoMore)
{
    auto stuck = stationOf();
    stuck.listTime = [](double time) { return time > 12.0 && time < 27.0 ? 12.0 : time; };
    auto missing = stationOf();
    missing.fault = [](const ServerRequest& request, double time) -> std::optional<Answer> {
        return numberOf(request) % 4 == 3 && time > 4.0 ? std::optional(statusAnswer(404)) : std::nullopt;
    };
    auto discontinuity = stationOf();
    discontinuity.linesBefore = [](int segment) {
        return segment % 3 == 0 ? QByteArray("#EXT-X-DISCONTINUITY\n") : QByteArray();
    };
    auto restart = stationOf();
    restart.numbering = [](int segment, double time) { return time < 12.0 ? segment + 100 : segment; };
    const auto results =
        hear({ { "stuck", stuck }, { "missing", missing }, { "discontinuity", discontinuity }, { "restart", restart } },
            44.0);
    for (const auto& [name, heard] : results) {
        SCOPED_TRACE(name + inFigures(heard));
        testing::Test::RecordProperty(name, inFigures(heard));
        ASSERT_TRUE(heard.report.firstSound.has_value());
        EXPECT_FALSE(heard.events.contains(QStringLiteral("ended")));
        if (name == "stuck") {
            EXPECT_LE(heard.report.longestGap, 3.5);
            EXPECT_LE(heard.events.count(QStringLiteral("stalled")), 1);
            EXPECT_LE(heard.report.lost + heard.report.repeated, 0.2);
        } else if (name == "missing") {
            EXPECT_LE(heard.report.longestGap, 0.3);
            // In 44 seconds at most three are due to be missing.
            EXPECT_LE(heard.report.lost, 3 * (segmentSeconds + 0.3));
            EXPECT_GE(heard.report.lost, segmentSeconds);
        } else {
            EXPECT_LE(heard.report.longestGap, 0.3);
            EXPECT_LE(heard.report.lost + heard.report.repeated, 0.5);
            EXPECT_GE(heard.report.heard, 42.5);
        }
    }
}

TEST(HlsEarsTest, aVariantThatIsGoneIsLeftForTheNextLowerUnheard)
{
    auto gone = stationOf();
    // The other variant is the same programme with other sounds: what was heard of it is told by its seconds.
    gone.variants = { { "high", { &programme(), 192000 } },
        { "low", { &programme(SegmentKind::TransportMp3, otherVariant), 64000 } } };
    const auto isGone = [](const ServerRequest& request) { return request.path.startsWith("/high/"); };
    auto list = gone;
    list.fault = [isGone](const ServerRequest& request, double time) -> std::optional<Answer> {
        return isGone(request) && time > 6.0 ? std::optional(statusAnswer(404)) : std::nullopt;
    };
    auto segments = gone;
    segments.fault = [isGone](const ServerRequest& request, double time) -> std::optional<Answer> {
        const bool fails = isGone(request) && numberOf(request) >= 0 && time > 6.0;
        return fails ? std::optional(statusAnswer(404)) : std::nullopt;
    };
    const auto results = hear({ { "list", list, "/master.m3u8" }, { "segments", segments, "/master.m3u8" } }, 32.0);
    for (const auto& [name, heard] : results) {
        SCOPED_TRACE(name + inFigures(heard));
        testing::Test::RecordProperty(name, inFigures(heard));
        ASSERT_TRUE(heard.report.firstSound.has_value());
        EXPECT_LE(heard.report.longestGap, 0.3);
        EXPECT_GE(heard.report.heard, 30.5);
        EXPECT_GE(heard.report.secondsHeard.back(), static_cast<int>(otherVariant));
    }
}

TEST(HlsEarsTest, aCarefulServerIsHeardBySecureTransportWithCookiesAndPackedLists)
{
    const TestAuthority authority;
    auto careful = stationOf();
    careful.certificate = authority.good();
    // Segments are given to those only who bring what the list gave them, and the list is behind a redirect.
    careful.fault = [](const ServerRequest& request, double) -> std::optional<Answer> {
        if (request.path == "/start") {
            Answer answer = redirectAnswer(302, "/a/list.m3u8?visit=1");
            answer.headers.append(qMakePair(QByteArray("Set-Cookie"), QByteArray("visit=7; Path=/")));
            return answer;
        }
        const bool isKnown = request.header("cookie").contains("visit=7");
        return isKnown ? std::nullopt : std::optional(statusAnswer(403));
    };
    SegmentStation station(careful);
    Listening listening(0, live::TransportSettings{ .certificateAuthorities = authority.file() });
    listening.play(station.url("/start"));
    listenFor(8.0);
    const Heard heard{ listening.heard(), listening.events, station.server().requests() };
    SCOPED_TRACE(inFigures(heard));
    ASSERT_TRUE(heard.report.firstSound.has_value());
    EXPECT_LE(heard.report.longestGap, 0.02);
    EXPECT_GE(heard.report.heard, 6.5);
}

}
