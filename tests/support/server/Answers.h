// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/server/Answer.h"

namespace velarin::test {

// The answers that tests and scenarios are made of.
[[nodiscard]] Answer stationAnswer(std::shared_ptr<const StationProgramme> programme, const QByteArray& contentType);
[[nodiscard]] Answer bodyAnswer(const QByteArray& body, const QByteArray& contentType);
[[nodiscard]] Answer statusAnswer(int status);
[[nodiscard]] Answer redirectAnswer(int status, const QByteArray& location);
// Takes the request and says nothing.
[[nodiscard]] Answer silentAnswer();

[[nodiscard]] Answer withFault(Answer answer, Fault fault, Seconds after);
[[nodiscard]] Answer withStall(Answer answer, Seconds after, Seconds length);
[[nodiscard]] Answer withFalseInterval(Answer answer);

[[nodiscard]] QByteArray webPage();
[[nodiscard]] QByteArray picture();
// Random, and the same each time.
[[nodiscard]] QByteArray garbage(qsizetype size, quint32 seed = 1);

}
