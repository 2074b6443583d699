// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/InstanceLock.h"

#include "platform/freedesktop/FreedesktopLog.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace velarin {

InstanceLock::InstanceLock(QString path)
    : m_path(std::move(path))
{
}

InstanceLock::~InstanceLock()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

bool InstanceLock::open()
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    m_descriptor = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    return m_descriptor >= 0;
}

bool InstanceLock::take(std::chrono::milliseconds patience)
{
    if (!open()) {
        qCWarning(desktopLog) << "no lock file at" << m_path;
        return true;
    }
    const QDeadlineTimer end(patience);
    while (flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return true;
        if (end.hasExpired())
            return false;
        QThread::msleep(20);
    }
    return true;
}

}
