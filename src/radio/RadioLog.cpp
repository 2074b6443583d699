// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioLog.h"

namespace velarin {

Q_LOGGING_CATEGORY(radioLog, "com.brenholt.velarin.player", QtInfoMsg)

}
