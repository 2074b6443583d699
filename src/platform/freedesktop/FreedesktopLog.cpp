// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopLog.h"

namespace velarin {

Q_LOGGING_CATEGORY(desktopLog, "com.brenholt.velarin.desktop", QtInfoMsg)

}
