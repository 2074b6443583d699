// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/TextFolding.h"

#include <QTextBoundaryFinder>

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/unorm.h>

#include <algorithm>

namespace velarin {

namespace {

icu::UnicodeString toIcu(QStringView text)
{
    return { reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size()) };
}

QString fromIcu(const icu::UnicodeString& text)
{
    // Not fromUtf16(), which takes a leading U+FFFE for a byte order mark and swaps all that follows.
    return QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
}

// Full-width ASCII, half-width katakana and hangul, and the full-width signs: the code points whose only compatibility
// mapping is one of width. The raw mapping, since the full one of a full-width macron or a half-width jamo goes on to
// other compatibility forms.
icu::UnicodeString withoutWidth(const icu::UnicodeString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfkd = icu::Normalizer2::getNFKDInstance(status);
    icu::UnicodeString result;
    for (int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
        const UChar32 point = text.char32At(at);
        const auto type = static_cast<UDecompositionType>(u_getIntPropertyValue(point, UCHAR_DECOMPOSITION_TYPE));
        icu::UnicodeString mapped;
        if ((type == U_DT_WIDE || type == U_DT_NARROW) && nfkd && nfkd->getRawDecomposition(point, mapped))
            result.append(mapped);
        else
            result.append(point);
    }
    return result;
}

icu::UnicodeString withoutMarks(const icu::UnicodeString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
    const icu::UnicodeString decomposed = U_SUCCESS(status) ? nfd->normalize(text, status) : text;
    icu::UnicodeString result;
    for (int32_t at = 0; at < decomposed.length(); at = decomposed.moveIndex32(at, 1)) {
        const UChar32 point = decomposed.char32At(at);
        if ((U_GET_GC_MASK(point) & U_GC_M_MASK) == 0)
            result.append(point);
    }
    return result;
}

bool isPlainAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
}

}

QString folded(QStringView text)
{
    // Nearly every name is plain ASCII, where folding is lower-casing.
    if (isPlainAscii(text))
        return text.toString().toLower();
    icu::UnicodeString result = withoutMarks(withoutWidth(toIcu(text)));
    result.foldCase();
    return fromIcu(result);
}

QString normalizedForMatching(QStringView text)
{
    const QString lower = folded(text).toLower();
    QString result;
    result.reserve(lower.size());
    bool gap = false;
    for (const QChar unit : lower) {
        const char16_t value = unit.unicode();
        if (value == u' ') {
            gap = !result.isEmpty();
        } else if ((value >= u'a' && value <= u'z') || (value >= u'0' && value <= u'9')) {
            if (gap)
                result.append(u' ');
            gap = false;
            result.append(unit);
        }
    }
    return result;
}

bool equalsIgnoringCase(QStringView left, QStringView right)
{
    // With canonical equivalence, since an accented letter may be written as one code point or as two.
    const icu::UnicodeString first = toIcu(left);
    const icu::UnicodeString second = toIcu(right);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t order = unorm_compare(
        first.getBuffer(), first.length(), second.getBuffer(), second.length(), U_COMPARE_IGNORE_CASE, &status);
    return U_SUCCESS(status) && order == 0;
}

QString lowerCased(QStringView text)
{
    return text.toString().toLower();
}

bool codePointLess(QStringView left, QStringView right)
{
    return toIcu(left).compareCodePointOrder(toIcu(right)) < 0;
}

QString trimmed(QStringView text)
{
    return text.trimmed().toString();
}

qsizetype characterCount(QStringView text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.toString());
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

QString firstCharacter(QStringView text)
{
    const QString whole = text.toString();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, whole);
    const qsizetype end = finder.toNextBoundary();
    return end > 0 ? whole.left(end) : QString();
}

QString withFirstCharacterUpperCased(QStringView text)
{
    const QString first = firstCharacter(text);
    return first.toUpper() + text.mid(first.size()).toString();
}

}
