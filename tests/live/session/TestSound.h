// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <vector>

namespace velarin::live::test {

// A programme of MPEG audio frames (128 kbit/s, 44.1 kHz) that can be told apart, each by its number.
constexpr int frameSize = 417;
constexpr double frameSeconds = 1152.0 / 44100.0;

[[nodiscard]] QByteArray frame(int number);
// Frames `from` up to, not including, `to`.
[[nodiscard]] QByteArray frames(int from, int to);
// Whole frames that make up at least so many seconds.
[[nodiscard]] int framesIn(double seconds);
// The numbers of the whole frames in the bytes.
[[nodiscard]] std::vector<int> numbersIn(QByteArrayView bytes);
// What is missing, repeated or out of order in a programme that begins at `first`; empty when it is whole.
[[nodiscard]] std::vector<int> breaksIn(const std::vector<int>& numbers, int first);

}
