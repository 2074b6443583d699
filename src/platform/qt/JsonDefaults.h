// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Defaults.h"
#include "platform/Files.h"

#include <QJsonObject>

#include <optional>

namespace velarin {

// Settings in one JSON file, read whole when this is made. Each change hands the whole object to the ordered writer at
// once. A file that is no JSON object, or is larger than 8 MiB, counts as empty and is kept beside as NAME.unreadable
// before it is overwritten. The first change makes the folder.
class JsonDefaults final : public Defaults
{
public:
    JsonDefaults(Files& files, QString path);

    // The settings of another program's file, for taking them over; absent if it is missing or does not decode. The
    // file is only read.
    [[nodiscard]] static std::optional<QJsonObject> readDomain(Files& files, const QString& path);

    QJsonValue value(const QString& key) const override;
    void setValue(const QString& key, const QJsonValue& value) override;
    void remove(const QString& key) override;

private:
    void store();

    Files& m_files;
    QString m_path;
    QJsonObject m_values;
};

}
