// SPDX-License-Identifier: GPL-3.0-or-later
// A file of stations, from the disk or from a directory: what decodes can be shown, keyed and sorted whatever it says,
// and is written in a form that reads the same.
#include "Claim.h"

#include "catalogue/StationLists.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    const auto stations = decodeStations(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!stations)
        return 0;
    for (const Station& station : *stations) {
        static_cast<void>(station.streamURL());
        static_cast<void>(station.alternateStreamURL());
        fuzz::claim(station.subtitle().startsWith(station.genreLabel()));
    }
    const StationLists::Catalogue catalogue = StationLists::catalogueOf(*stations);
    fuzz::claim(catalogue.italian.size() <= stations->size() && catalogue.byId.size() <= catalogue.italian.size());

    // A text that is no valid UTF-16 changes when it is first written, and never again.
    const auto once = decodeStations(encodeStations(*stations));
    fuzz::claim(once && once->size() == stations->size());
    fuzz::claim(decodeStations(encodeStations(*once)) == once);
    return 0;
}
