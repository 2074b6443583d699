// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/IcyTitle.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace velarin::live {
namespace {

constexpr QByteArrayView titleKey("StreamTitle=");

// The places of Windows-1252 that differ from Latin-1, 0x80 to 0x9f. The five that it leaves open stay what they are,
// as in the Encoding Standard of the WHATWG.
constexpr std::array<char16_t, 32> windows1252Specials{ u'\u20ac', 0x81, u'\u201a', u'\u0192', u'\u201e', u'\u2026',
    u'\u2020', u'\u2021', u'\u02c6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', 0x8d, u'\u017d', 0x8f, 0x90, u'\u2018',
    u'\u2019', u'\u201c', u'\u201d', u'\u2022', u'\u2013', u'\u2014', u'\u02dc', u'\u2122', u'\u0161', u'\u203a',
    u'\u0153', 0x9d, u'\u017e', u'\u0178' };

QString fromWindows1252(QByteArrayView bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar& character : text)
        if (character.unicode() >= 0x80 && character.unicode() < 0xa0)
            character = windows1252Specials[character.unicode() - 0x80u];
    return text;
}

bool isKeyCharacter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '_';
}

// Whether the bytes begin with a key and its equals sign: "StreamUrl=".
bool startsField(QByteArrayView bytes)
{
    const auto end = std::find_if_not(bytes.begin(), bytes.end(), isKeyCharacter);
    return end != bytes.begin() && end != bytes.end() && *end == '=';
}

// Where the value of StreamTitle begins; -1 without one. A key stands at the start or after a semicolon, so that an
// address which happens to hold the word is no title.
qsizetype startOfTitle(QByteArrayView block)
{
    for (qsizetype at = 0; at >= 0 && at < block.size(); at = block.indexOf(';', at) + 1) {
        const QByteArrayView rest = block.sliced(at);
        if (rest.size() >= titleKey.size() && rest.first(titleKey.size()).compare(titleKey, Qt::CaseInsensitive) == 0)
            return at + titleKey.size();
        if (rest.indexOf(';') < 0)
            break;
    }
    return -1;
}

// The value after its opening quote: up to the quote and semicolon before the next field, else the last ones there
// are, else (a block that was cut off) everything but a closing quote.
QByteArrayView quotedValue(QByteArrayView value)
{
    for (qsizetype end = value.indexOf("';"); end >= 0; end = value.indexOf("';", end + 1))
        if (startsField(value.sliced(end + 2)))
            return value.first(end);
    if (const qsizetype last = value.lastIndexOf("';"); last >= 0)
        return value.first(last);
    return value.endsWith('\'') ? value.chopped(1) : value;
}

QByteArrayView valueOf(QByteArrayView field)
{
    if (field.startsWith('\''))
        return quotedValue(field.sliced(1));
    const qsizetype end = field.indexOf(';');
    return end < 0 ? field : field.first(end);
}

QByteArrayView upToFirstNul(QByteArrayView block)
{
    const qsizetype nul = block.indexOf('\0');
    return nul < 0 ? block : block.first(nul);
}

}

QString textOfStreamBytes(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    return utf8.hasError() ? fromWindows1252(bytes) : text;
}

std::optional<QString> icyTitle(QByteArrayView block)
{
    const QByteArrayView text = upToFirstNul(block);
    const qsizetype start = startOfTitle(text);
    if (start < 0)
        return std::nullopt;
    // Some senders put a backslash before an apostrophe.
    return textOfStreamBytes(valueOf(text.sliced(start))).replace(QStringLiteral("\\'"), QStringLiteral("'")).trimmed();
}

}
