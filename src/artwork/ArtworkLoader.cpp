// SPDX-License-Identifier: GPL-3.0-or-later
#include "artwork/ArtworkLoader.h"

#include "artwork/Monogram.h"
#include "base/Executor.h"
#include "catalogue/Station.h"

#include <algorithm>

namespace velarin {

ArtworkLoader::ArtworkLoader(Executor& executor)
    : m_executor(executor)
    , m_monograms(mostBytes)
{
}

Task ArtworkLoader::image(const Station& station, std::function<void(const QImage&)> done)
{
    if (const QImage* picture = m_monograms.object(station.id))
        return runOn(
            m_executor, [kept = *picture] { return kept; }, std::move(done));
    auto arrived = [this, id = station.id, done = std::move(done)](const QImage& picture) {
        keep(id, picture);
        done(picture);
    };
    return runOn(
        m_executor, [name = station.name] { return Monogram::image(name, side); }, std::move(arrived));
}

// No picture costs less than its share of the memory, so one figure bounds both the bytes and the count.
void ArtworkLoader::keep(const QString& id, const QImage& picture)
{
    const qsizetype cost = std::max(picture.sizeInBytes(), mostBytes / mostPictures);
    m_monograms.insert(id, new QImage(picture), cost);
}

}
