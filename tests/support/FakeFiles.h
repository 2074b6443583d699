// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Files.h"

#include <QMap>
#include <QSet>
#include <QStringList>

#include <memory>
#include <vector>

namespace velarin::test {

// A disk in memory. Reads wait until deliverReads(); writes land at once and are listed in order.
class FakeFiles final : public Files
{
public:
    std::optional<QByteArray> readNow(const QString& path, qint64 maxBytes) override;
    bool exists(const QString& path) override;
    bool makeFolder(const QString& path) override;
    bool move(const QString& from, const QString& to, QString& error) override;
    Task read(const QString& path, qint64 maxBytes, std::function<void(std::optional<QByteArray>)> done) override;
    void write(const QString& path, Producer produce) override;
    void keepUnreadable(const QString& path) override;
    void flush() override { ++flushes; }

    // Answers every read asked for so far, and those that the answers ask for.
    void deliverReads();

    QMap<QString, QByteArray> contents;
    QSet<QString> folders;
    // Moves from these paths fail.
    QSet<QString> immovable;
    QStringList written;
    int flushes{ 0 };

private:
    struct PendingRead
    {
        QString path;
        qint64 maxBytes{ 0 };
        std::function<void(std::optional<QByteArray>)> done;
    };
    std::vector<std::shared_ptr<PendingRead>> m_reads;
    QSet<QString> m_unreadable;
};

}
