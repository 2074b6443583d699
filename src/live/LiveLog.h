// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

namespace velarin::live {

Q_DECLARE_LOGGING_CATEGORY(liveLog)

}
