// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/player/OutputDevicesModel.h"

namespace velarin {

OutputDevicesModel::OutputDevicesModel(OutputDevices& devices)
    : m_devices(devices)
{
}

OutputDevicesModel::~OutputDevicesModel()
{
    close();
}

int OutputDevicesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_present.size());
}

QVariant OutputDevicesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_present.size())
        return {};
    const OutputDevices::Device& device = m_present[index.row()];
    switch (role) {
    case NameRole:
        return device.name;
    case ChosenRole:
        return device.id == m_devices.selected();
    default:
        return {};
    }
}

QHash<int, QByteArray> OutputDevicesModel::roleNames() const
{
    return { { NameRole, "name" }, { ChosenRole, "chosen" } };
}

void OutputDevicesModel::open()
{
    if (m_open)
        return;
    m_open = true;
    m_devices.startWatching([this](const QList<OutputDevices::Device>& present) { show(present); });
}

void OutputDevicesModel::close()
{
    if (!m_open)
        return;
    m_open = false;
    m_devices.stopWatching();
}

void OutputDevicesModel::choose(int row)
{
    if (row < 0 || row >= m_present.size())
        return;
    m_devices.select(m_present[row].id);
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), { ChosenRole });
}

void OutputDevicesModel::show(const QList<OutputDevices::Device>& present)
{
    if (present == m_present)
        return;
    beginResetModel();
    m_present = present;
    endResetModel();
}

}
