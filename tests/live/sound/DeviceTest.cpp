// SPDX-License-Identifier: GPL-3.0-or-later
// The device: lost, gone, absent, changed; and the volume.
#include "SoundBench.h"

#include <QDir>
#include <QJsonDocument>

#include <fstream>

namespace velarin::test {
namespace {

using namespace std::chrono_literals;

class DeviceTest : public SoundTest
{
protected:
    void startPlaying(double length)
    {
        const auto branch = open(live::SoundFormat::Mpeg);
        feeder.give(branch, Programme{ .length = length }.encoded(), true);
        pipeline->play();
    }
    bool untilHeard(double seconds)
    {
        return until([this, seconds] { return pipeline->heardSeconds() > seconds; });
    }
};

TEST_F(DeviceTest, aServerStartedAgainGoesOnWithTheSoundThatItWasLostWith)
{
    startPlaying(4.0);
    ASSERT_TRUE(untilHeard(1.0));
    server.kill();
    ASSERT_TRUE(server.start());
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    EXPECT_LT(report.longestGap, 1.5);
    // The ear itself was away for a moment.
    EXPECT_LT(report.lost, 0.3);
    EXPECT_LT(report.repeated, 0.2);
    EXPECT_NEAR(pipeline->heardSeconds(), 4.0, 0.1);
    EXPECT_TRUE(feeder.deviceFailures.empty());
    EXPECT_EQ(feeder.heard, 1);
}

TEST_F(DeviceTest, aServerKilledForGoodIsToldAfterASecond)
{
    startPlaying(4.0);
    ASSERT_TRUE(untilHeard(1.0));
    const double killedAt = ear->now();
    server.kill();
    ASSERT_TRUE(until([this] { return !feeder.deviceFailures.empty(); }));
    EXPECT_NEAR(ear->now() - killedAt, 1.1, 0.3);
    EXPECT_EQ(feeder.deviceFailures.front().front().domain, AudioErrorDomain::gstResource);
    EXPECT_EQ(feeder.deviceFailures.front().front().code, GstError::resourceNoDevice);
    const double heard = pipeline->heardSeconds();
    loop.runFor(300ms);
    EXPECT_EQ(pipeline->heardSeconds(), heard);
    EXPECT_EQ(feeder.deviceFailures.size(), 1U);

    ASSERT_TRUE(server.start());
    pipeline->play();
    ASSERT_TRUE(untilDry());
    EXPECT_NEAR(pipeline->heardSeconds(), 4.0, 0.1);
    EXPECT_EQ(feeder.heard, 2);
}

TEST_F(DeviceTest, noServerAtTheStartIsToldAtOnce)
{
    server.kill();
    live::GstSoundPipelineFactory factory(loop, selection);
    pipeline = factory.make(feeder);
    feeder.attach(*pipeline);
    const auto start = loop.now();
    startPlaying(1.0);
    EXPECT_TRUE(until([this] { return !feeder.deviceFailures.empty(); }));
    EXPECT_LT(loop.now() - start, 1s);
    EXPECT_EQ(feeder.heard, 0);
    ASSERT_TRUE(server.start());
    pipeline->play();
    EXPECT_TRUE(untilDry());
    EXPECT_NEAR(pipeline->heardSeconds(), 1.0, 0.1);
}

TEST_F(DeviceTest, aDeviceThatIsRemovedIsReplacedByTheDefault)
{
    ASSERT_TRUE(server.addDevice(QStringLiteral("headset")));
    ASSERT_TRUE(server.makeDefault(device));
    selection->select(QStringLiteral("headset"));
    startPlaying(3.0);
    ASSERT_TRUE(untilHeard(1.0));
    EXPECT_EQ(ear->report().firstSound, std::nullopt);
    ASSERT_TRUE(server.removeDevice(QStringLiteral("headset")));
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    ASSERT_TRUE(report.firstSound);
    EXPECT_NEAR(report.heard, 2.0, 0.25);
    EXPECT_TRUE(feeder.deviceFailures.empty());
    EXPECT_NEAR(pipeline->heardSeconds(), 3.0, 0.1);
}

// What somebody hears who stands between two loudspeakers.
std::vector<float> mixed(const Ear& one, const Ear& other)
{
    std::vector<float> mix = one.recording();
    const std::vector<float> second = other.recording();
    const auto shift = static_cast<qint64>((one.now() - other.now()) * Ear::framesPerSecond);
    for (std::size_t index = 0; index < second.size(); ++index) {
        const auto place = static_cast<qint64>(index) + shift;
        if (place >= 0 && place < static_cast<qint64>(mix.size()))
            mix[static_cast<std::size_t>(place)] += second[index];
    }
    return mix;
}

TEST_F(DeviceTest, theDeviceChangesWithoutABreakInTheSound)
{
    const QString other = QStringLiteral("loudspeaker");
    ASSERT_TRUE(server.addDevice(other));
    const Ear there(server.address(), other);
    ASSERT_TRUE(there.isListening());
    startPlaying(4.0);
    ASSERT_TRUE(untilHeard(1.0));
    selection->select(other);
    ASSERT_TRUE(untilHeard(2.5));
    selection->select(device);
    ASSERT_TRUE(untilDry());
    const EarReport here = heardSoFar();
    EXPECT_NEAR(here.heard, 2.5, 0.25);
    const EarReport both = judge(mixed(*ear, there), Ear::framesPerSecond);
    EXPECT_LE(both.longestGap, 0.05);
    EXPECT_LT(both.lost, 0.06);
    EXPECT_LT(both.repeated, 0.06);
    RecordProperty("figures", QJsonDocument(both.toJson()).toJson(QJsonDocument::Compact).toStdString());
    EXPECT_EQ(feeder.heard, 1);
    EXPECT_EQ(feeder.dry, 1);
    ASSERT_TRUE(server.removeDevice(other));
}

TEST_F(DeviceTest, aStepOfTheVolumeDoesNotClick)
{
    const auto branch = open(live::SoundFormat::Mpeg);
    feeder.give(branch, encodedTone(220.0, 3.0), true);
    pipeline->setVolume(0.0F);
    pipeline->play();
    ASSERT_TRUE(until([this] { return feeder.heard == 1; }));
    for (const float volume : { 1.0F, 0.1F, 0.9F, 0.0F, 0.6F, 0.05F }) {
        pipeline->setVolume(volume);
        loop.runFor(350ms);
    }
    ASSERT_TRUE(untilDry());
    const EarReport report = heardSoFar();
    EXPECT_GT(report.heard, 1.0);
    // The tone itself rises by 0.025 from one sample to the next, and the ramp adds a little.
    EXPECT_LT(report.steepest, 0.04);
    EXPECT_GT(report.steepest, 0.02);
}

TEST_F(DeviceTest, theVolumeIsALinearFactor)
{
    const auto branch = open(live::SoundFormat::Mpeg);
    feeder.give(branch, encodedTone(220.0, 1.5), true);
    pipeline->setVolume(0.25F);
    pipeline->play();
    ASSERT_TRUE(untilDry());
    loop.runFor(300ms);
    const std::vector<float> sound = ear->recording();
    EXPECT_NEAR(*std::max_element(sound.begin(), sound.end()), 0.2, 0.01);
}

struct Footprint
{
    long threads{ 0 };
    long descriptors{ 0 };
    long kilobytes{ 0 };
};

Footprint footprint()
{
    Footprint now;
    now.threads = QDir(QStringLiteral("/proc/self/task")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
    now.descriptors =
        QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
    std::ifstream status("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    status >> pages >> resident;
    now.kilobytes = resident * 4;
    return now;
}

TEST_F(DeviceTest, aThousandPipelinesLeaveNothingBehind)
{
    const QByteArray sound = Programme{ .length = 2.0 }.encoded();
    live::GstSoundPipelineFactory factory(loop, selection);
    Footprint early;
    for (int index = 0; index < 1000; ++index) {
        pipeline.reset();
        feeder = Feeder();
        pipeline = factory.make(feeder);
        feeder.attach(*pipeline);
        if (index % 2 == 0) {
            const auto branch = open(live::SoundFormat::Mpeg);
            feeder.give(branch, sound);
            pipeline->play();
            // Some to the ear, the others cut off on the way.
            const bool isHeard = index % 20 == 0;
            ASSERT_TRUE(until([&] { return isHeard ? feeder.heard > 0 : pipeline->decodedSeconds() > 0.1; }));
        }
        if (index == 100)
            early = footprint();
    }
    pipeline.reset();
    loop.runFor(50ms);
    const Footprint late = footprint();
    EXPECT_LE(late.threads, early.threads);
    EXPECT_LE(late.descriptors, early.descriptors);
    RecordProperty("kilobytesGrown", static_cast<int>(late.kilobytes - early.kilobytes));
#ifndef __SANITIZE_ADDRESS__
    // The sanitizer keeps what was freed.
    EXPECT_LT(late.kilobytes - early.kilobytes, 5 * 1024);
#endif
}

}
}
