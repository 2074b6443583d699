// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/OutputDevices.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace velarin {

// The menu of the places where sound can come out. It watches them only while it is open.
class OutputDevicesModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    enum Role
    {
        NameRole = Qt::UserRole,
        ChosenRole,
    };

    explicit OutputDevicesModel(OutputDevices& devices);
    ~OutputDevicesModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void open();
    Q_INVOKABLE void close();
    Q_INVOKABLE void choose(int row);

private:
    void show(const QList<OutputDevices::Device>& present);

    OutputDevices& m_devices;
    QList<OutputDevices::Device> m_present;
    bool m_open{ false };
};

}
