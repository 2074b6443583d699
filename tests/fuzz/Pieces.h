// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>

#include <algorithm>
#include <cstdint>

namespace velarin::fuzz {

inline QByteArrayView view(const std::uint8_t* data, std::size_t size)
{
    return { reinterpret_cast<const char*>(data), static_cast<qsizetype>(size) };
}

// Hands over the bytes in pieces of `length`.
template<typename Take>
void inPieces(QByteArrayView bytes, qsizetype length, Take take)
{
    for (qsizetype at = 0; at < bytes.size(); at += length)
        take(bytes.sliced(at, std::min(length, bytes.size() - at)));
}

}
