// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/BodyText.h"

#include <QByteArrayList>

#include <algorithm>

namespace velarin::live {
namespace {

// Encoded sound does not go on for so long without a control character.
constexpr qsizetype surelyText = 512;
// What begins like a tag needs less.
constexpr qsizetype surelyMarkup = 16;
constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");

bool isOfText(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return (byte >= 0x20 && byte != 0x7f) || (byte >= 0x09 && byte <= 0x0d) || byte == 0x1b;
}

bool readsAsText(QByteArrayView bytes)
{
    const QByteArrayView judged = bytes.first(std::min(bytes.size(), surelyText));
    return !judged.isEmpty() && std::all_of(judged.begin(), judged.end(), isOfText);
}

QByteArrayView withoutMark(QByteArrayView text)
{
    return (text.startsWith(byteOrderMark) ? text.sliced(byteOrderMark.size()) : text).trimmed();
}

// The first line that says something: not empty, no comment.
QByteArray firstEntry(const QByteArray& text)
{
    QByteArray lines = text;
    lines.replace('\r', '\n');
    for (const QByteArray& line : lines.split('\n'))
        if (const QByteArray entry = line.trimmed(); !entry.isEmpty() && !entry.startsWith('#'))
            return entry;
    return {};
}

bool isListType(QByteArrayView type)
{
    return type.contains("mpegurl") || type.contains("scpls") || type == "audio/m3u" || type == "audio/pls";
}

bool isList(const QByteArray& text, QByteArrayView contentType)
{
    const QByteArray entry = firstEntry(text);
    return text.startsWith("#extm3u") || entry.startsWith("[playlist]") || entry.startsWith("http://") ||
           entry.startsWith("https://") || (entry.startsWith("file") && entry.contains("=http")) ||
           (isListType(contentType) && !entry.isEmpty());
}

// Text with neither markup nor data in front: lower case.
BodyKind kindOfLines(const QByteArray& text, QByteArrayView contentType, bool allThere)
{
    if (text.startsWith("#extm3u") && text.contains("#ext-x-"))
        return BodyKind::SegmentList;
    if (!allThere)
        return BodyKind::NeedsMore;
    return isList(text, contentType) ? BodyKind::Playlist : BodyKind::NotSound;
}

}

std::optional<BodyKind> kindOfText(QByteArrayView first, QByteArrayView contentType, bool allThere)
{
    if (!readsAsText(first))
        return std::nullopt;
    const QByteArrayView text = withoutMark(first);
    const bool isMarkup = text.startsWith('<') && text.size() >= surelyMarkup;
    if (isMarkup)
        return BodyKind::NotSound;
    if (!allThere && first.size() < surelyText && !text.startsWith("#EXTM3U"))
        return std::nullopt;
    return kindOfLines(text.toByteArray().toLower(), contentType, allThere);
}

}
