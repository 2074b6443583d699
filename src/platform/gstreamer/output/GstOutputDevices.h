// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/OutputDevices.h"
#include "platform/gstreamer/output/DeviceSelection.h"

#include <QCoreApplication>
#include <QObject>

#include <memory>

namespace velarin {

// The sound server's devices, from GStreamer's device monitor. The monitor is made, runs and ends on a thread of its
// own, since its start asks the server and waits for the answer.
class GstOutputDevices final : public OutputDevices
{
    Q_DECLARE_TR_FUNCTIONS(GstOutputDevices)

public:
    explicit GstOutputDevices(std::shared_ptr<DeviceSelection> selection);
    ~GstOutputDevices() override;
    GstOutputDevices(const GstOutputDevices&) = delete;
    GstOutputDevices& operator=(const GstOutputDevices&) = delete;

    void startWatching(std::function<void(const QList<Device>&)> changed) override;
    void stopWatching() override;
    QString selected() const override;
    void select(const QString& id) override;

private:
    class Watch;

    std::shared_ptr<DeviceSelection> m_selection;
    std::unique_ptr<QObject> m_context;
    std::unique_ptr<Watch> m_watch;
};

}
