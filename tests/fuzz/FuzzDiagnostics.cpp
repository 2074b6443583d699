// SPDX-License-Identifier: GPL-3.0-or-later
// The file of the log, as whoever may have left it: what decodes can be put into words and is written in a form that
// reads the same.
#include "Claim.h"

#include "diagnostics/DiagnosticEventText.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    const auto events =
        decodeDiagnostics(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!events)
        return 0;
    for (const DiagnosticEvent& event : *events)
        fuzz::claim(event.date.isValid() && !label(event.category).isEmpty());

    // A text that is no valid UTF-16 changes when it is first written, and never again.
    const auto once = decodeDiagnostics(encodeDiagnostics(*events));
    fuzz::claim(once && once->size() == events->size());
    fuzz::claim(decodeDiagnostics(encodeDiagnostics(*once)) == once);
    return 0;
}
