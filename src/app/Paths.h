// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace velarin {

// The user's base folders of the XDG Base Directory Specification, absolute, without a slash at the end.
struct BaseFolders
{
    QString data;
    QString cache;
    QString config;
    bool operator==(const BaseFolders&) const = default;
};

// From the environment; the temporary folder stands in for one that the system does not know.
[[nodiscard]] BaseFolders userFolders();

// The program's own folders. They come from migrate(), so nobody opens a file before the migration has finished.
struct Paths
{
    // What the user would miss.
    QString support;
    // What can be fetched or made again.
    QString caches;
    bool operator==(const Paths&) const = default;
};

}
