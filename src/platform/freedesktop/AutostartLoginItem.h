// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/LoginItem.h"

#include <QStringList>

namespace velarin {

// A desktop entry in the user's autostart folder (Desktop Application Autostart Specification).
//
// The file has some hundred bytes and is read and written at once, on the calling thread: at start, before there is
// anything to hold up, and when the user moves the switch. More than 64 KiB of it are never read.
class AutostartLoginItem final : public LoginItem
{
public:
    // `entryPath`: the file in the autostart folder. `command`: this program by its absolute path, then its arguments.
    AutostartLoginItem(QString entryPath, QStringList command);

    // $XDG_CONFIG_HOME/autostart/com.brenholt.velarin.desktop.
    [[nodiscard]] static QString userEntryPath();

    Status status() override;
    std::optional<QString> registerItem() override;
    std::optional<QString> unregisterItem() override;

private:
    QString m_entryPath;
    QStringList m_command;
};

}
