// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/GstOutputDevices.h"

#include "support/WaitUntil.h"
#include "support/ears/SoundServer.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace velarin::test {
namespace {

class GstOutputDevicesTest : public testing::Test
{
protected:
    void watch()
    {
        devices.startWatching([this](const QList<OutputDevices::Device>& present) {
            list = present;
            ++told;
        });
    }
    bool has(const QString& id) const
    {
        return std::any_of(list.begin(), list.end(), [&](const auto& device) { return device.id == id; });
    }

    SoundServer& server{ SoundServer::shared() };
    std::shared_ptr<DeviceSelection> selection{ std::make_shared<DeviceSelection>() };
    GstOutputDevices devices{ selection };
    QList<OutputDevices::Device> list;
    int told{ 0 };
};

TEST_F(GstOutputDevicesTest, theDefaultComesFirst)
{
    watch();
    EXPECT_EQ(told, 0) << "only in a later turn";
    ASSERT_TRUE(waitUntil([this] { return told > 0; }));
    EXPECT_EQ(list.front(), (OutputDevices::Device{ QString(), QStringLiteral("Uscita predefinita") }));
}

TEST_F(GstOutputDevicesTest, theServersDevicesHaveItsNamesAndPeoplesNames)
{
    watch();
    ASSERT_TRUE(waitUntil([this] { return has(SoundServer::deviceName(3)); }));
    EXPECT_EQ(list.size(), 1 + SoundServer::deviceCount);
    EXPECT_EQ(list[1], (OutputDevices::Device{ QStringLiteral("ear0"), QStringLiteral("Silent-ear0") }));
}

TEST_F(GstOutputDevicesTest, aDeviceThatComesOrGoesIsTold)
{
    watch();
    ASSERT_TRUE(waitUntil([this] { return has(SoundServer::deviceName(3)); }));
    ASSERT_TRUE(server.addDevice(QStringLiteral("headset")));
    EXPECT_TRUE(waitUntil([this] { return has(QStringLiteral("headset")); }));
    ASSERT_TRUE(server.removeDevice(QStringLiteral("headset")));
    EXPECT_TRUE(waitUntil([this] { return !has(QStringLiteral("headset")); }));
}

TEST_F(GstOutputDevicesTest, nothingIsToldAfterTheWatch)
{
    watch();
    ASSERT_TRUE(waitUntil([this] { return told > 0; }));
    devices.stopWatching();
    const int before = told;
    ASSERT_TRUE(server.addDevice(QStringLiteral("late")));
    (void)waitUntil([] { return false; }, std::chrono::milliseconds(300));
    EXPECT_EQ(told, before);
    ASSERT_TRUE(server.removeDevice(QStringLiteral("late")));
}

TEST_F(GstOutputDevicesTest, aChoiceReachesTheOutputs)
{
    QString chosen;
    const auto output = selection->subscribe([&](const QString& device) { chosen = device; });
    EXPECT_EQ(devices.selected(), QString());
    devices.select(QStringLiteral("ear2"));
    EXPECT_EQ(chosen, QStringLiteral("ear2"));
    EXPECT_EQ(devices.selected(), QStringLiteral("ear2"));
}

TEST_F(GstOutputDevicesTest, withoutAServerThereIsTheDefaultAlone)
{
    server.kill();
    watch();
    ASSERT_TRUE(waitUntil([this] { return told > 0; }));
    EXPECT_EQ(list.size(), 1);
    EXPECT_TRUE(server.start());
}

}
}
