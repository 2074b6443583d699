// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace velarin {

// The picture at `side` pixels square, its corners cut by a radius of `corner` pixels, with smooth edges. Neither
// renderer can round a picture by itself. Any thread.
[[nodiscard]] QImage roundedPicture(const QImage& picture, int side, double corner);

}
