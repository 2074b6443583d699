// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/DeviceSelection.h"

namespace velarin {

QString DeviceSelection::selected() const
{
    const std::scoped_lock lock(m_mutex);
    return m_device;
}

void DeviceSelection::select(const QString& device)
{
    const std::scoped_lock lock(m_mutex);
    if (m_device == device)
        return;
    m_device = device;
    for (const auto& changed : m_listeners)
        changed(device);
}

std::unique_ptr<DeviceSelection::Subscription> DeviceSelection::subscribe(std::function<void(const QString&)> changed)
{
    const std::scoped_lock lock(m_mutex);
    return std::make_unique<Subscription>(*this, m_listeners.insert(m_listeners.end(), std::move(changed)));
}

DeviceSelection::Subscription::Subscription(DeviceSelection& selection, Listeners::iterator listener)
    : m_selection(selection)
    , m_listener(listener)
{
}

DeviceSelection::Subscription::~Subscription()
{
    const std::scoped_lock lock(m_selection.m_mutex);
    m_selection.m_listeners.erase(m_listener);
}

}
