// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Migration.h"

#include "platform/Defaults.h"
#include "platform/Files.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

namespace velarin {

namespace {

Q_LOGGING_CATEGORY(pathsLog, "com.brenholt.velarin.paths", QtInfoMsg)

const QString migratedKey = QStringLiteral("migrated_from_lumarin");
constexpr qint64 maxSettingsBytes = 8LL * 1024 * 1024;

QString lastComponent(const QString& path)
{
    return QFileInfo(path).fileName();
}

void moveOver(Files& files, const QString& from, const QString& to, const QString& description)
{
    if (!files.exists(from) || files.exists(to))
        return;
    files.makeFolder(QFileInfo(to).path());
    QString error;
    if (files.move(from, to, error)) {
        qCInfo(pathsLog).noquote().nospace()
            << "migrated " << description << ": " << lastComponent(from) << " → " << lastComponent(to);
    } else {
        qCWarning(pathsLog).noquote().nospace() << "migration of " << description << " failed: " << error;
    }
}

// Empty where there are none, or none that can be read.
QJsonObject formerSettings(Files& files, const QString& path)
{
    const auto bytes = files.readNow(path, maxSettingsBytes);
    return QJsonDocument::fromJson(bytes.value_or(QByteArray())).object();
}

void carrySettingsOver(const QJsonObject& former, Defaults& defaults)
{
    int carried = 0;
    for (auto setting = former.begin(); setting != former.end(); ++setting) {
        if (defaults.contains(setting.key()))
            continue;
        defaults.setValue(setting.key(), setting.value());
        ++carried;
    }
    qCInfo(pathsLog).noquote().nospace() << "carried " << carried << " settings over from Lumarin";
}

void migrateSettings(const QString& formerPath, Files& files, Defaults& defaults)
{
    if (defaults.boolean(migratedKey).value_or(false))
        return;
    defaults.setBoolean(migratedKey, true);
    const QJsonObject former = formerSettings(files, formerPath);
    if (!former.isEmpty())
        carrySettingsOver(former, defaults);
}

}

Paths migrate(const BaseFolders& folders, Files& files, Defaults& defaults)
{
    Paths paths{ folders.data + QStringLiteral("/Velarin"), folders.cache + QStringLiteral("/Velarin") };
    moveOver(files, folders.data + QStringLiteral("/Ardevox"), paths.support, QStringLiteral("dati"));
    files.makeFolder(paths.support);
    moveOver(files, folders.data + QStringLiteral("/alarms.json"), paths.support + QStringLiteral("/alarms.json"),
        QStringLiteral("sveglie"));
    moveOver(files, folders.cache + QStringLiteral("/Lumarin"), paths.caches, QStringLiteral("loghi"));
    files.makeFolder(paths.caches);
    migrateSettings(folders.config + QStringLiteral("/com.brenholt.lumarin.json"), files, defaults);
    return paths;
}

}
