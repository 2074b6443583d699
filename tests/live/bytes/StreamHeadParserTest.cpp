// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/StreamHeadParser.h"

#include <gtest/gtest.h>

namespace velarin::live {
namespace {

using State = StreamHeadParser::State;

// Reads the lines of a head, as libcurl hands them over: with their line ends.
State read(StreamHeadParser& parser, const QByteArray& head)
{
    State state = parser.state();
    for (qsizetype at = 0; at < head.size();) {
        const qsizetype end = head.indexOf('\n', at) + 1;
        state = parser.readLine(QByteArrayView(head).sliced(at, end - at));
        at = end;
    }
    return state;
}

TEST(StreamHeadParserTest, readsWhatAStationSays)
{
    StreamHeadParser parser;
    EXPECT_EQ(read(parser, "HTTP/1.1 200 OK\r\nContent-Type: Audio/MPEG; charset=x\r\nicy-metaint:16000\r\n"
                           "icy-br: 128,128\r\nicy-name: Radio\r\n\r\n"),
        State::Complete);
    EXPECT_EQ(parser.head().status, 200);
    EXPECT_EQ(parser.head().contentType, "audio/mpeg");
    EXPECT_EQ(parser.head().metadataInterval, 16000);
    EXPECT_EQ(parser.head().claimedBitRate, 128'000);
}

TEST(StreamHeadParserTest, readsTheOldProtocol)
{
    StreamHeadParser parser;
    EXPECT_EQ(read(parser, "ICY 200 OK\nicy-metaint: 8192\n\n"), State::Complete);
    EXPECT_EQ(parser.head().status, 200);
    EXPECT_EQ(parser.head().metadataInterval, 8192);
    StreamHeadParser refused;
    EXPECT_EQ(read(refused, "ICY 401 Service Unavailable\r\n\r\n"), State::Complete);
    EXPECT_EQ(refused.head().status, 401);
}

TEST(StreamHeadParserTest, whatARedirectSaidDoesNotCount)
{
    StreamHeadParser parser;
    EXPECT_EQ(read(parser, "HTTP/1.1 302 Found\r\nLocation: /b\r\nicy-metaint: 5\r\nContent-Type: text/html\r\n\r\n"),
        State::Passed);
    EXPECT_EQ(read(parser, "HTTP/1.0 200 OK\r\n\r\n"), State::Complete);
    EXPECT_EQ(parser.head().contentType, "");
    EXPECT_FALSE(parser.head().metadataInterval);
}

TEST(StreamHeadParserTest, aRedirectToNowhereIsAnAnswer)
{
    StreamHeadParser parser;
    EXPECT_EQ(read(parser, "HTTP/1.1 302 Found\r\nLocation:\r\n\r\n"), State::Complete);
    EXPECT_EQ(parser.head().status, 302);
}

TEST(StreamHeadParserTest, interimAnswersArePassedOver)
{
    StreamHeadParser parser;
    EXPECT_EQ(read(parser, "HTTP/1.1 103 Early Hints\r\nContent-Type: text/html\r\n\r\n"), State::Passed);
    EXPECT_EQ(read(parser, "HTTP/1.1 200 OK\r\n\r\n"), State::Complete);
}

TEST(StreamHeadParserTest, numbersThatAreNoneAreAbsent)
{
    for (const char* value : { "", "0", "-5", "abc", "99999999999999999999", "17000000", "Quality 6" }) {
        StreamHeadParser parser;
        read(parser, QByteArray("HTTP/1.1 200 OK\r\nicy-metaint: ") + value + "\r\nicy-br: " + value + "\r\n\r\n");
        EXPECT_FALSE(parser.head().metadataInterval) << value;
        EXPECT_FALSE(parser.head().claimedBitRate) << value;
    }
}

TEST(StreamHeadParserTest, whatBeginsWithNoStatusLineIsMalformed)
{
    for (const char* line : { "RTSP/1.0 200 OK\r\n", "HTTP/1.1\r\n", "HTTP/1.1 OK\r\n", "HTTP/1.1 20 OK\r\n", "\r\n" })
        EXPECT_EQ(StreamHeadParser().readLine(QByteArrayView(line)), State::Malformed) << line;
}

TEST(StreamHeadParserTest, linesThatAreNoFieldsArePassedOver)
{
    StreamHeadParser parser;
    EXPECT_EQ(read(parser, "HTTP/1.1 200 OK\r\nnonsense\r\n: x\r\nicy-br: 64\r\n\r\n"), State::Complete);
    EXPECT_EQ(parser.head().claimedBitRate, 64'000);
}

TEST(StreamHeadParserTest, aHeadTooLongIsMalformed)
{
    StreamHeadParser parser;
    parser.readLine(QByteArrayView("HTTP/1.1 200 OK\r\n"));
    const QByteArray line = "X-Filling: " + QByteArray(1000, 'x') + "\r\n";
    int lines = 0;
    while (parser.readLine(line) == State::Reading)
        ++lines;
    EXPECT_EQ(parser.state(), State::Malformed);
    EXPECT_LT(lines * line.size(), StreamHeadParser::byteLimit);
}

TEST(StreamHeadParserTest, aHeadOfTooManyLinesIsMalformed)
{
    StreamHeadParser parser;
    parser.readLine(QByteArrayView("HTTP/1.1 200 OK\r\n"));
    int lines = 0;
    while (parser.readLine(QByteArrayView("a:\r\n")) == State::Reading)
        ++lines;
    EXPECT_EQ(lines, StreamHeadParser::lineLimit - 1);
}

TEST(StreamHeadParserTest, linesAfterTheHeadChangeNothing)
{
    StreamHeadParser parser;
    read(parser, "HTTP/1.1 200 OK\r\nicy-br: 64\r\n\r\n");
    EXPECT_EQ(parser.readLine(QByteArrayView("icy-br: 128\r\n")), State::Complete);
    EXPECT_EQ(parser.head().claimedBitRate, 64'000);
}

}
}
