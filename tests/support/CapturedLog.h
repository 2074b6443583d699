// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace velarin::test {

// The developer log while this object lives, as "category: message", in place of the standard error. One at a time.
class CapturedLog
{
public:
    CapturedLog()
    {
        captured().clear();
        m_former = qInstallMessageHandler([](QtMsgType, const QMessageLogContext& context, const QString& message) {
            captured().append(QString::fromUtf8(context.category) + QStringLiteral(": ") + message);
        });
    }
    ~CapturedLog() { qInstallMessageHandler(m_former); }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    [[nodiscard]] QStringList lines() const { return captured(); }

private:
    static QStringList& captured()
    {
        static QStringList list;
        return list;
    }

    QtMessageHandler m_former{ nullptr };
};

}
