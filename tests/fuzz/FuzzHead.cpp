// SPDX-License-Identifier: GPL-3.0-or-later
// The heads of an answer, line by line.
#include "Claim.h"
#include "Pieces.h"
#include "live/StreamHeadParser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    using State = live::StreamHeadParser::State;
    live::StreamHeadParser parser;
    QByteArrayView rest = fuzz::view(data, size);
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf('\n');
        const qsizetype length = end < 0 ? rest.size() : end + 1;
        const bool wasFinal = parser.state() == State::Complete || parser.state() == State::Malformed;
        const State before = parser.state();
        const State after = parser.readLine(rest.first(length));
        fuzz::claim(!wasFinal || after == before);
        rest = rest.sliced(length);
    }
    const live::StreamHead& head = parser.head();
    fuzz::claim(head.status >= 0 && head.status <= 999);
    fuzz::claim(!head.metadataInterval ||
                (*head.metadataInterval > 0 && *head.metadataInterval <= live::StreamHeadParser::longestInterval));
    fuzz::claim(!head.claimedBitRate || (*head.claimedBitRate > 0 && *head.claimedBitRate <= 10'000'000));
    return 0;
}
