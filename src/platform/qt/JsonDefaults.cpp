// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/JsonDefaults.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <utility>

namespace velarin {

namespace {

constexpr qint64 greatestFile = 8 * 1024 * 1024;

}

JsonDefaults::JsonDefaults(Files& files, QString path)
    : m_files(files)
    , m_path(std::move(path))
{
    if (auto stored = readDomain(m_files, m_path))
        m_values = std::move(*stored);
    else if (m_files.exists(m_path))
        m_files.keepUnreadable(m_path);
}

std::optional<QJsonObject> JsonDefaults::readDomain(Files& files, const QString& path)
{
    const auto content = files.readNow(path, greatestFile);
    if (!content)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(*content);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QJsonValue JsonDefaults::value(const QString& key) const
{
    return m_values.value(key);
}

void JsonDefaults::setValue(const QString& key, const QJsonValue& value)
{
    if (m_values.value(key) == value)
        return;
    m_values.insert(key, value);
    store();
}

void JsonDefaults::remove(const QString& key)
{
    if (!m_values.contains(key))
        return;
    m_values.remove(key);
    store();
}

void JsonDefaults::store()
{
    // A user whose desktop has never stored a setting has no folder for them yet.
    m_files.makeFolder(QFileInfo(m_path).path());
    m_files.write(m_path, [values = m_values] { return QJsonDocument(values).toJson(); });
}

}
