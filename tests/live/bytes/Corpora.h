// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>

#include <gtest/gtest.h>

namespace velarin::test {

// The content of a file of the folder of real data (the CMake option VELARIN_CORPORA); empty without it.
inline QByteArray corpus(const QString& path)
{
    QFile file(QStringLiteral(VELARIN_CORPORA "/") + path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}

#define VELARIN_NEEDS_CORPORA()                                                                                        \
    if (*VELARIN_CORPORA == '\0')                                                                                      \
    GTEST_SKIP() << "SKIPPED: needs real data; configure with -DVELARIN_CORPORA=FOLDER"
