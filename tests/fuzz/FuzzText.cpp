// SPDX-License-Identifier: GPL-3.0-or-later
// Names out of a directory, in any UTF-16, lone surrogates included: folding is stable, and what matching compares
// holds nothing but letters, digits and single blanks.
#include "Claim.h"

#include "base/StableHash.h"
#include "base/TextFolding.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

bool isMatchingUnit(QChar unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9') || unit == u' ';
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    QString text(static_cast<qsizetype>(size / 2), Qt::Uninitialized);
    std::memcpy(text.data(), data, size / 2 * 2);
    const QString once = folded(text);
    fuzz::claim(folded(once) == once);
    const QString normalized = normalizedForMatching(text);
    fuzz::claim(std::all_of(normalized.begin(), normalized.end(), isMatchingUnit));
    fuzz::claim(normalized == normalized.simplified() && normalizedForMatching(normalized) == normalized);
    fuzz::claim(equalsIgnoringCase(text, text) && !codePointLess(text, text));
    const qsizetype characters = characterCount(text);
    fuzz::claim(characters <= text.size() && (characters == 0) == text.isEmpty());
    fuzz::claim(withFirstCharacterUpperCased(text).endsWith(text.mid(firstCharacter(text).size())));
    fuzz::claim(javaHashCode(text) == javaHashCode(QString(text)));
    return 0;
}
