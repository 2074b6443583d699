// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace velarin {

class Broadcasts;

// The places of the sidebar, and which of them is shown. A place is known by its raw text.
class SidebarModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QString selection READ selection WRITE select NOTIFY selectionChanged)

public:
    enum Role
    {
        PlaceRole = Qt::UserRole,
        // The heading of a group, for its first place; else empty.
        HeadingRole,
        LabelRole,
        SymbolRole,
    };

    // A place asked for through the broadcasts is shown.
    explicit SidebarModel(Broadcasts& broadcasts);

    [[nodiscard]] QString selection() const { return m_selection; }
    // A text that is no place changes nothing.
    void select(const QString& place);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void selectionChanged();

private:
    QString m_selection{ QStringLiteral("italy") };
};

}
