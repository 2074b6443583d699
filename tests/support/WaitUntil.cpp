// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace velarin::test {

bool waitUntil(const std::function<bool()>& predicate, std::chrono::milliseconds deadline)
{
    const QDeadlineTimer end(deadline);
    QTimer tick;
    tick.start(std::chrono::milliseconds(5));
    while (!predicate()) {
        if (end.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

}
