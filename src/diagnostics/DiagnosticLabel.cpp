// SPDX-License-Identifier: GPL-3.0-or-later
#include "diagnostics/DiagnosticEventText.h"

#include <QCoreApplication>

namespace velarin {

QString toText(DiagnosticCategory category)
{
    switch (category) {
    case DiagnosticCategory::app:
        return QStringLiteral("app");
    case DiagnosticCategory::playback:
        return QStringLiteral("playback");
    case DiagnosticCategory::error:
        return QStringLiteral("error");
    case DiagnosticCategory::network:
        return QStringLiteral("network");
    case DiagnosticCategory::car:
        return QStringLiteral("car");
    case DiagnosticCategory::interruption:
        return QStringLiteral("interruption");
    case DiagnosticCategory::remote:
        return QStringLiteral("remote");
    case DiagnosticCategory::alarm:
        return QStringLiteral("alarm");
    case DiagnosticCategory::heartbeat:
        return QStringLiteral("heartbeat");
    }
    Q_UNREACHABLE();
}

std::optional<DiagnosticCategory> diagnosticCategoryFromText(const QString& text)
{
    for (const DiagnosticCategory category : allDiagnosticCategories) {
        if (toText(category) == text)
            return category;
    }
    return std::nullopt;
}

QString label(DiagnosticCategory category)
{
    switch (category) {
    case DiagnosticCategory::app:
        return QCoreApplication::translate("Diagnostics", "APP");
    case DiagnosticCategory::playback:
        return QCoreApplication::translate("Diagnostics", "AUDIO");
    case DiagnosticCategory::error:
        return QCoreApplication::translate("Diagnostics", "ERRORE");
    case DiagnosticCategory::network:
        return QCoreApplication::translate("Diagnostics", "RETE");
    case DiagnosticCategory::car:
        return QCoreApplication::translate("Diagnostics", "AUTO");
    case DiagnosticCategory::interruption:
        return QCoreApplication::translate("Diagnostics", "INTERRUZIONE");
    case DiagnosticCategory::remote:
        return QCoreApplication::translate("Diagnostics", "TASTI");
    case DiagnosticCategory::alarm:
        return QCoreApplication::translate("Diagnostics", "SVEGLIA");
    case DiagnosticCategory::heartbeat:
        return QCoreApplication::translate("Diagnostics", "BATTITO");
    }
    Q_UNREACHABLE();
}

}
