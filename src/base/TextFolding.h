// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

namespace velarin {

// The text with case, diacritics and width folded: canonical decomposition without combining marks, full case
// folding, full-width and half-width forms mapped to the ordinary ones. No other compatibility mapping, no locale.
[[nodiscard]] QString folded(QStringView text);

// The form in which names are compared: folded, lower-cased, only "a" to "z", "0" to "9" and single blanks kept. Every
// other code point is dropped without a gap, so "R.T.L." gives "rtl". A name in another script gives the empty text.
[[nodiscard]] QString normalizedForMatching(QStringView text);

// Whether two texts are equal under full case folding and canonical equivalence, diacritics counting.
[[nodiscard]] bool equalsIgnoringCase(QStringView left, QStringView right);

// The key under which lists are sorted by name: lower-cased, to be compared by code point.
[[nodiscard]] QString lowerCased(QStringView text);
// Whether `left` stands before `right`, by code point and not by UTF-16 unit.
[[nodiscard]] bool codePointLess(QStringView left, QStringView right);

// Without white space and line breaks at both ends.
[[nodiscard]] QString trimmed(QStringView text);

// The number of user-perceived characters (grapheme clusters, UAX #29).
[[nodiscard]] qsizetype characterCount(QStringView text);
// The first user-perceived character, or the empty text.
[[nodiscard]] QString firstCharacter(QStringView text);
// The first character in upper case, the rest as it is.
[[nodiscard]] QString withFirstCharacterUpperCased(QStringView text);

}
