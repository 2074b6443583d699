// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/GstOutputDevices.h"

#include <gst/gst.h>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace velarin {
namespace {

QString takeText(char* text)
{
    const QString copy = QString::fromUtf8(text);
    g_free(text);
    return copy;
}

// The name that the server has for a device. GStreamer keeps it to itself, but an element made for the device has it.
QString serverName(GstDevice* device)
{
    GstElement* element = gst_device_create_element(device, nullptr);
    if (!element)
        return {};
    gst_object_ref_sink(element);
    char* name = nullptr;
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(element), "device"))
        g_object_get(element, "device", &name, nullptr);
    gst_object_unref(element);
    return takeText(name);
}

QList<OutputDevices::Device> devicesOf(GstDeviceMonitor* monitor)
{
    QList<OutputDevices::Device> devices{ { {}, GstOutputDevices::tr("Uscita predefinita") } };
    // One that could not start has nothing to say, and would ask the missing server again.
    GList* found = monitor ? gst_device_monitor_get_devices(monitor) : nullptr;
    for (const GList* at = found; at; at = at->next) {
        auto* device = GST_DEVICE(at->data);
        const OutputDevices::Device output{ serverName(device), takeText(gst_device_get_display_name(device)) };
        if (!output.id.isEmpty() && !devices.contains(output))
            devices.append(output);
    }
    g_list_free_full(found, gst_object_unref);
    return devices;
}

}

// One stretch of watching: its thread sleeps until the bus of the monitor has something or the watch ends.
class GstOutputDevices::Watch
{
public:
    explicit Watch(std::function<void(QList<Device>)> found)
        : m_found(std::move(found))
        , m_thread([this] { run(); })
    {
    }
    ~Watch()
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_stopped = true;
        }
        m_changed.notify_all();
        m_thread.join();
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

private:
    static GstBusSyncReply heard(GstBus* /*bus*/, GstMessage* message, void* self)
    {
        auto& watch = *static_cast<Watch*>(self);
        const auto type = GST_MESSAGE_TYPE(message);
        if (type == GST_MESSAGE_DEVICE_ADDED || type == GST_MESSAGE_DEVICE_REMOVED ||
            type == GST_MESSAGE_DEVICE_CHANGED) {
            const std::scoped_lock lock(watch.m_mutex);
            watch.m_isStale = true;
            watch.m_changed.notify_all();
        }
        gst_message_unref(message);
        return GST_BUS_DROP;
    }

    void run()
    {
        gst_init(nullptr, nullptr);
        GstDeviceMonitor* monitor = gst_device_monitor_new();
        gst_device_monitor_add_filter(monitor, "Audio/Sink", nullptr);
        GstBus* bus = gst_device_monitor_get_bus(monitor);
        gst_bus_set_sync_handler(bus, &heard, this, nullptr);
        const bool started = gst_device_monitor_start(monitor);
        follow(started ? monitor : nullptr);
        if (started)
            gst_device_monitor_stop(monitor);
        gst_bus_set_sync_handler(bus, nullptr, nullptr, nullptr);
        gst_object_unref(bus);
        gst_object_unref(monitor);
    }

    void follow(GstDeviceMonitor* monitor)
    {
        std::unique_lock lock(m_mutex);
        while (!m_stopped) {
            m_isStale = false;
            lock.unlock();
            m_found(devicesOf(monitor));
            lock.lock();
            m_changed.wait(lock, [this] { return m_isStale || m_stopped; });
        }
    }

    std::function<void(QList<Device>)> m_found;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    // Protected by the mutex.
    bool m_isStale{ false };
    bool m_stopped{ false };
    // Last: everything that it uses is there when it starts.
    std::thread m_thread;
};

GstOutputDevices::GstOutputDevices(std::shared_ptr<DeviceSelection> selection)
    : m_selection(std::move(selection))
{
}

GstOutputDevices::~GstOutputDevices() = default;

void GstOutputDevices::startWatching(std::function<void(const QList<Device>&)> changed)
{
    stopWatching();
    // A context that lives as long as the watch: what is still queued when it ends is dropped with it.
    m_context = std::make_unique<QObject>();
    m_watch = std::make_unique<Watch>([context = m_context.get(), changed = std::move(changed)](QList<Device> devices) {
        QMetaObject::invokeMethod(
            context, [changed, devices = std::move(devices)] { changed(devices); }, Qt::QueuedConnection);
    });
}

void GstOutputDevices::stopWatching()
{
    m_watch.reset();
    m_context.reset();
}

QString GstOutputDevices::selected() const
{
    return m_selection->selected();
}

void GstOutputDevices::select(const QString& id)
{
    m_selection->select(id);
}

}
