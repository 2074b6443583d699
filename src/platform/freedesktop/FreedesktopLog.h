// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

namespace velarin {

Q_DECLARE_LOGGING_CATEGORY(desktopLog)

}
