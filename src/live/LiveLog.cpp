// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/LiveLog.h"

namespace velarin::live {

Q_LOGGING_CATEGORY(liveLog, "com.brenholt.velarin.live", QtInfoMsg)

}
