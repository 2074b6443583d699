// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisTest.h"

#include <QDBusArgument>
#include <QDBusVariant>

namespace velarin::test {

namespace {

const QString service = QStringLiteral("org.mpris.MediaPlayer2.velarin");
const QString path = QStringLiteral("/org/mpris/MediaPlayer2");
const QString rootInterface = QStringLiteral("org.mpris.MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

}

PlayerListener::PlayerListener(QDBusConnection bus)
{
    bus.connect(service, path, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
        SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    bus.connect(service, path, playerInterface, QStringLiteral("Seeked"), this, SLOT(seeked(qlonglong)));
}

void PlayerListener::propertiesChanged(
    const QString& interface, const QVariantMap& changed, const QStringList& invalidated)
{
    EXPECT_EQ(interface, playerInterface);
    EXPECT_TRUE(invalidated.isEmpty());
    changes.push_back(changed);
}

QDBusMessage MprisTest::callPlayer(const QString& method, const QVariantList& arguments)
{
    auto call = QDBusMessage::createMethodCall(service, path, playerInterface, method);
    call.setArguments(arguments);
    return answerTo(desktop, call);
}

QDBusMessage MprisTest::callRoot(const QString& method)
{
    return answerTo(desktop, QDBusMessage::createMethodCall(service, path, rootInterface, method));
}

QVariant MprisTest::player(const QString& property)
{
    return propertyOf(desktop, service, path, playerInterface, property);
}

QVariant MprisTest::root(const QString& property)
{
    return propertyOf(desktop, service, path, rootInterface, property);
}

QVariantMap MprisTest::metadata()
{
    return qdbus_cast<QVariantMap>(player(QStringLiteral("Metadata")));
}

QDBusMessage MprisTest::set(const QString& property, const QVariant& value)
{
    auto call = QDBusMessage::createMethodCall(service, path, propertiesInterface, QStringLiteral("Set"));
    call << playerInterface << property << QVariant::fromValue(QDBusVariant(value));
    return answerTo(desktop, call);
}

void MprisTest::settle()
{
    // The bus keeps the order of what one connection sends, so what the controls sent before the answer is here.
    EXPECT_TRUE(player(QStringLiteral("PlaybackStatus")).isValid());
}

void MprisTest::handleEverything()
{
    auto word = [this](const char* text) { return [this, text] { m_heard << QString::fromLatin1(text); }; };
    auto number = [this](const char* text) {
        return [this, text](double value) { m_heard << QStringLiteral("%1 %2").arg(QLatin1String(text)).arg(value); };
    };
    controls->setHandlers({ .play = word("play"),
        .pause = word("pause"),
        .togglePlayPause = word("toggle"),
        .stop = word("stop"),
        .next = word("next"),
        .previous = word("previous"),
        .skip = number("skip"),
        .changePosition = number("move") });
    controls->setApplicationHandlers({ .raise = word("raise"),
        .quit = word("quit"),
        .openUri = [this](const QString& address) { m_heard << QStringLiteral("open ") + address; },
        .setVolume = number("volume") });
}

NowPlaying MprisTest::radio()
{
    return { .title = QStringLiteral("La canzone"),
        .artist = QStringLiteral("Chi canta"),
        .album = QStringLiteral("Radio Prova"),
        .genre = QStringLiteral("Pop"),
        .isLive = true,
        .rate = 1.0,
        .contentId = QStringLiteral("it-è"),
        .duration = {},
        .elapsed = {},
        .artwork = {} };
}

NowPlaying MprisTest::episode(double elapsed)
{
    NowPlaying item = radio();
    item.isLive = false;
    item.contentId = QStringLiteral("episodio");
    item.duration = 1800.0;
    item.elapsed = elapsed;
    return item;
}

QImage MprisTest::picture(Qt::GlobalColor color)
{
    QImage image(64, 64, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

}
