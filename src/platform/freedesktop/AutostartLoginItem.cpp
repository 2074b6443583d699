// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/AutostartLoginItem.h"

#include "platform/freedesktop/LoginEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace velarin {

namespace {

constexpr qint64 longestEntry = 64 * 1024;

}

AutostartLoginItem::AutostartLoginItem(QString entryPath, QStringList command)
    : m_entryPath(std::move(entryPath))
    , m_command(std::move(command))
{
}

QString AutostartLoginItem::userEntryPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart/com.brenholt.velarin.desktop");
}

LoginItem::Status AutostartLoginItem::status()
{
    // A pipe or a device under the name would hold up the reading for ever.
    if (!QFileInfo(m_entryPath).isFile())
        return Status::NotRegistered;
    QFile file(m_entryPath);
    if (!file.open(QIODevice::ReadOnly))
        return Status::NeedsRepair;
    return judgeLoginEntry(file.read(longestEntry), m_command);
}

std::optional<QString> AutostartLoginItem::registerItem()
{
    const QString folder = QFileInfo(m_entryPath).absolutePath();
    if (!QDir().mkpath(folder))
        return QCoreApplication::translate("AutostartLoginItem", "impossibile creare la cartella %1").arg(folder);
    QSaveFile file(m_entryPath);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    file.write(loginEntry(m_command));
    return file.commit() ? std::nullopt : std::optional(file.errorString());
}

std::optional<QString> AutostartLoginItem::unregisterItem()
{
    QFile file(m_entryPath);
    return !file.exists() || file.remove() ? std::nullopt : std::optional(file.errorString());
}

}
