// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Paths.h"

#include <QDir>
#include <QStandardPaths>

namespace velarin {

namespace {

QString folder(QStandardPaths::StandardLocation location)
{
    const QString path = QStandardPaths::writableLocation(location);
    return path.isEmpty() ? QDir::tempPath() : path;
}

}

BaseFolders userFolders()
{
    return {
        folder(QStandardPaths::GenericDataLocation),
        folder(QStandardPaths::GenericCacheLocation),
        folder(QStandardPaths::GenericConfigLocation),
    };
}

}
