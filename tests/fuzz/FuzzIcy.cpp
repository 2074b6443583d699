// SPDX-License-Identifier: GPL-3.0-or-later
// ICY metadata: a block alone, and a body whose first bytes choose the interval and the pieces.
#include "Claim.h"
#include "Pieces.h"
#include "live/IcyReader.h"
#include "live/IcyTitle.h"

namespace {

using namespace velarin;

live::IcyOutput readAll(qint64 interval, QByteArrayView body, qsizetype length)
{
    live::IcyReader reader(interval);
    live::IcyOutput all;
    fuzz::inPieces(body, length, [&](QByteArrayView piece) {
        const live::IcyOutput output = reader.read(piece);
        all.sound += output.sound;
        all.titles.insert(all.titles.end(), output.titles.begin(), output.titles.end());
    });
    return all;
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes = fuzz::view(data, size);
    if (const std::optional<QString> title = live::icyTitle(bytes))
        fuzz::claim(*title == title->trimmed() && title->size() <= bytes.size());
    if (size < 2)
        return 0;
    const QByteArrayView body = bytes.sliced(2);
    const qint64 interval = 1 + data[0];
    const live::IcyOutput whole = readAll(interval, body, std::max<qsizetype>(1, body.size()));
    fuzz::claim(whole == readAll(interval, body, 1 + data[1] % 32));
    fuzz::claim(whole.sound.size() <= body.size());
    for (const live::TitleMark& mark : whole.titles)
        fuzz::claim(mark.position > 0 && mark.position <= whole.sound.size());
    return 0;
}
