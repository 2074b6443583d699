// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Executor.h"

#include <QImage>
#include <QString>
#include <QUrl>

#include <functional>

namespace velarin {

// The picture of what sounds, as a file that the desktop can open. Main thread; encoding, writing and removing happen
// on the executor, one job at a time, so that the last picture asked for is the one that stays.
//
// A picture's file is named for its contents, because displays remember a picture by its address. There is at most one
// file; the folder goes with this object.
class MprisArtwork
{
public:
    // Without a folder (no runtime folder of the user's) there never is an address.
    // `changed` is called in a turn of its own when the address of the picture last shown has come to be.
    MprisArtwork(Executor& executor, QString folder, std::function<void()> changed);
    ~MprisArtwork();
    MprisArtwork(const MprisArtwork&) = delete;
    MprisArtwork& operator=(const MprisArtwork&) = delete;

    // A null image: none. The picture that is already shown costs nothing.
    void show(const QImage& picture);
    // Empty until the file of the picture last shown is there.
    [[nodiscard]] const QUrl& address() const { return m_address; }

private:
    void write();
    void written(const QImage& picture, const QString& path);

    Executor& m_executor;
    QString m_folder;
    std::function<void()> m_changed;
    QImage m_shown;
    QUrl m_address;
    bool m_isWriting{ false };
    Task m_job;
};

}
