// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "diagnostics/DiagnosticEvent.h"

#include <QByteArray>
#include <QList>

#include <array>
#include <optional>

namespace velarin {

inline constexpr std::array allDiagnosticCategories{
    DiagnosticCategory::app,
    DiagnosticCategory::playback,
    DiagnosticCategory::error,
    DiagnosticCategory::network,
    DiagnosticCategory::car,
    DiagnosticCategory::interruption,
    DiagnosticCategory::remote,
    DiagnosticCategory::alarm,
    DiagnosticCategory::heartbeat,
};

// The stored text, "playback".
[[nodiscard]] QString toText(DiagnosticCategory category);
[[nodiscard]] std::optional<DiagnosticCategory> diagnosticCategoryFromText(const QString& text);
// What the user reads, "AUDIO".
[[nodiscard]] QString label(DiagnosticCategory category);

// The file: an array of objects with "id", "date" (seconds since 2001), "category" and "message". Reading is strict:
// one field that is missing, of another type or unknown fails the whole file.
[[nodiscard]] QByteArray encodeDiagnostics(const QList<DiagnosticEvent>& events);
[[nodiscard]] std::optional<QList<DiagnosticEvent>> decodeDiagnostics(const QByteArray& json);

}
