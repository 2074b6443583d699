// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <algorithm>
#include <random>
#include <vector>

namespace velarin::test {

// The bytes cut at random places, as a network might; `longest` is a piece's greatest length.
inline std::vector<QByteArray> cutAtRandom(const QByteArray& bytes, std::mt19937& random, int longest)
{
    std::uniform_int_distribution<int> length(1, longest);
    std::vector<QByteArray> pieces;
    for (qsizetype at = 0; at < bytes.size();) {
        pieces.push_back(bytes.mid(at, length(random)));
        at += pieces.back().size();
    }
    return pieces;
}

// The same for the same seed.
inline QByteArray randomBytes(qsizetype size, unsigned seed)
{
    std::mt19937 random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<char>(random() & 0xff); });
    return bytes;
}

}
