// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/TestSound.h"

#include <cmath>
#include <random>

namespace velarin::live::test {

namespace {

const QByteArray header = QByteArrayLiteral("\xFF\xFB\x90\x04");
constexpr int numberAt = 40;
constexpr int noiseSize = 64 * 1024;

// Without 0xFF, so that there is no second header to be found within a frame. A frame begins at any place of it.
const QByteArray& noise()
{
    static const QByteArray noise = [] {
        std::minstd_rand random;
        QByteArray bytes;
        while (bytes.size() < noiseSize + frameSize)
            bytes.append(static_cast<char>(random() % 255U));
        return bytes;
    }();
    return noise;
}

}

QByteArray frame(int number)
{
    QByteArray bytes = header + noise().mid((number * 131) % noiseSize, frameSize - header.size());
    for (int digit = 0; digit < 4; ++digit)
        bytes[numberAt + digit] = static_cast<char>((number >> (7 * digit)) & 0x7F);
    return bytes;
}

QByteArray frames(int from, int to)
{
    QByteArray bytes;
    for (int number = from; number < to; ++number)
        bytes += frame(number);
    return bytes;
}

int framesIn(double seconds)
{
    return static_cast<int>(std::ceil(seconds / frameSeconds));
}

std::vector<int> numbersIn(QByteArrayView bytes)
{
    std::vector<int> numbers;
    qsizetype at = 0;
    while (at + frameSize <= bytes.size()) {
        if (!bytes.sliced(at).startsWith(header)) {
            ++at;
            continue;
        }
        int number = 0;
        for (int digit = 0; digit < 4; ++digit)
            number |= bytes[at + numberAt + digit] << (7 * digit);
        numbers.push_back(number);
        at += frameSize;
    }
    return numbers;
}

std::vector<int> breaksIn(const std::vector<int>& numbers, int first)
{
    std::vector<int> breaks;
    int expected = first;
    for (const int number : numbers) {
        if (number != expected)
            breaks.push_back(number);
        expected = number + 1;
    }
    return breaks;
}

}
