// SPDX-License-Identifier: GPL-3.0-or-later
// An address as a directory, a playlist or a person writes it: whatever it is, an address that comes out has a scheme
// and survives being written down and read again.
#include "Claim.h"

#include "base/Urls.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto url = urlFromText(text);
    if (!url)
        return 0;
    fuzz::claim(url->isValid() && !url->scheme().isEmpty());
    const auto again = urlFromText(url->toString(QUrl::FullyEncoded));
    fuzz::claim(!isWebAddress(*url) || (again && again->host() == url->host()));
    return 0;
}
