// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/freedesktop/MprisModel.h"

#include <QDBusAbstractAdaptor>
#include <QStringList>

namespace velarin {

// The names of members in this file are those of the MPRIS 2.2 interfaces, by which Qt exports them.

class MprisRootAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ yes CONSTANT)
    Q_PROPERTY(bool CanRaise READ yes CONSTANT)
    Q_PROPERTY(bool HasTrackList READ no CONSTANT)
    Q_PROPERTY(QString Identity READ identity CONSTANT)
    Q_PROPERTY(QString DesktopEntry READ desktopEntry CONSTANT)
    Q_PROPERTY(QStringList SupportedUriSchemes READ supportedUriSchemes CONSTANT)
    Q_PROPERTY(QStringList SupportedMimeTypes READ supportedMimeTypes CONSTANT)

public:
    MprisRootAdaptor(MprisModel& model, QObject* parent);

    [[nodiscard]] bool yes() const { return true; }
    [[nodiscard]] bool no() const { return false; }
    [[nodiscard]] QString identity() const;
    [[nodiscard]] QString desktopEntry() const;
    [[nodiscard]] QStringList supportedUriSchemes() const;
    [[nodiscard]] QStringList supportedMimeTypes() const;

public Q_SLOTS:
    void Raise();
    // The caller gets its answer before the quit begins.
    void Quit();

private:
    MprisModel& m_model;
};

class MprisPlayerAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(double Volume READ volume WRITE setVolume)
    Q_PROPERTY(qlonglong Position READ position)
    Q_PROPERTY(double Rate READ rate WRITE setRate)
    Q_PROPERTY(double MinimumRate READ rate CONSTANT)
    Q_PROPERTY(double MaximumRate READ rate CONSTANT)
    Q_PROPERTY(bool CanGoNext READ canGoNext)
    Q_PROPERTY(bool CanGoPrevious READ canGoPrevious)
    Q_PROPERTY(bool CanPlay READ yes CONSTANT)
    Q_PROPERTY(bool CanPause READ yes CONSTANT)
    Q_PROPERTY(bool CanSeek READ canSeek)
    Q_PROPERTY(bool CanControl READ yes CONSTANT)

public:
    MprisPlayerAdaptor(MprisModel& model, QObject* parent);

    [[nodiscard]] QString playbackStatus() const { return m_model.shown.playbackStatus; }
    [[nodiscard]] QVariantMap metadata() const { return m_model.shown.metadata; }
    [[nodiscard]] double volume() const { return m_model.shown.volume; }
    // What is no number is not handed on.
    void setVolume(double volume);
    // Microseconds; 0 for a live stream.
    [[nodiscard]] qlonglong position() const;
    [[nodiscard]] double rate() const { return 1.0; }
    // The standard wants the property writable. The one rate between minimum and maximum is the one that it has; a
    // rate of 0 is a pause.
    void setRate(double rate);
    [[nodiscard]] bool canGoNext() const { return m_model.shown.canGoNext; }
    [[nodiscard]] bool canGoPrevious() const { return m_model.shown.canGoPrevious; }
    [[nodiscard]] bool canSeek() const { return m_model.shown.canSeek; }
    [[nodiscard]] bool yes() const { return true; }

public Q_SLOTS:
    void Play();
    void Pause();
    void PlayPause();
    void Stop();
    void Next();
    void Previous();
    void Seek(qlonglong Offset);
    void SetPosition(const QDBusObjectPath& TrackId, qlonglong Position);
    void OpenUri(const QString& Uri);

Q_SIGNALS:
    void Seeked(qlonglong Position);

private:
    MprisModel& m_model;
};

}
