// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>
#include <list>
#include <memory>
#include <mutex>

namespace velarin {

// The device that the user chose for all sound of the program: one object, shared by the menu and by every output.
// Any thread.
class DeviceSelection
{
public:
    // Ends when destroyed. It must not outlive the selection.
    class Subscription;

    [[nodiscard]] QString selected() const;
    void select(const QString& device);

    // `changed` is called on the thread that selects, during select(), until the subscription is gone; it must not
    // come back here.
    [[nodiscard]] std::unique_ptr<Subscription> subscribe(std::function<void(const QString&)> changed);

private:
    using Listeners = std::list<std::function<void(const QString&)>>;

    mutable std::mutex m_mutex;
    // Both protected by the mutex.
    QString m_device;
    Listeners m_listeners;
};

class DeviceSelection::Subscription
{
public:
    Subscription(DeviceSelection& selection, Listeners::iterator listener);
    ~Subscription();
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

private:
    DeviceSelection& m_selection;
    Listeners::iterator m_listener;
};

}
