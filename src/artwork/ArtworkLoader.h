// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"

#include <QCache>
#include <QImage>
#include <QObject>

#include <functional>

namespace velarin {

class Executor;
struct Station;

// A square picture for every station; asking always yields one. Main thread only; the pictures are made on the pool.
class ArtworkLoader : public QObject
{
    Q_OBJECT

public:
    // Pixels.
    static constexpr int side = 512;

    // Pictures kept, and the memory that they may take in all.
    static constexpr qsizetype mostPictures = 600;
    static constexpr qsizetype mostBytes = 24LL * 1024 * 1024;

    explicit ArtworkLoader(Executor& executor);

    // `done` in a later turn, unless the task is cancelled.
    [[nodiscard]] Task image(const Station& station, std::function<void(const QImage&)> done);

    // How many pictures are at hand.
    [[nodiscard]] qsizetype kept() const { return m_monograms.size(); }

private:
    void keep(const QString& id, const QImage& picture);

    Executor& m_executor;
    // By station id; the picture is by name.
    QCache<QString, QImage> m_monograms;
};

}
