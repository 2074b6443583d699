// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/AlsaDevice.h"

#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <vector>

namespace velarin::test {
namespace {

constexpr int rate = 44100;

// ALSA with a configuration of the test's own.
class AlsaDeviceTest : public testing::Test
{
protected:
    void configure(const QByteArray& text)
    {
        QFile file(folder.filePath(QStringLiteral("asound.conf")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        qputenv("ALSA_CONFIG_PATH", file.fileName().toUtf8());
        gst_init(nullptr, nullptr);
    }

    QTemporaryDir folder;
    std::atomic<int> heard{ 0 };
    std::atomic<int> dry{ 0 };
    AlsaDevice device{ { .heard = [this] { ++heard; }, .dry = [this] { ++dry; } } };
};

TEST_F(AlsaDeviceTest, withoutACardItCannotBeOpened)
{
    configure("pcm.!default { type hw card 31 }\n");
    const auto error = device.open(rate, {});
    ASSERT_TRUE(error);
    EXPECT_EQ(error->domain, AudioErrorDomain::gstResource);
    EXPECT_EQ(error->code, GstError::resourceNoDevice);
}

TEST_F(AlsaDeviceTest, takesSoundAndTellsWhenItIsHeardAndWhenItIsOver)
{
    configure("pcm.!default { type null }\nctl.!default { type hw card 31 }\n");
    ASSERT_EQ(device.open(rate, {}), std::nullopt);
    device.setPaused(false);
    const std::vector<float> sound(rate, 0.1F);
    EXPECT_EQ(device.write(sound), sound.size());
    EXPECT_TRUE(waitUntil([this] { return dry > 0; }));
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(device.heardFrames(), rate / 2);
    EXPECT_TRUE(device.isDry());
}

TEST_F(AlsaDeviceTest, takesNothingWhileInterrupted)
{
    configure("pcm.!default { type null }\n");
    ASSERT_EQ(device.open(rate, {}), std::nullopt);
    device.setInterrupted(true);
    EXPECT_EQ(device.write(std::vector<float>(rate, 0.1F)), 0U);
}

}
}
