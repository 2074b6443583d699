// SPDX-License-Identifier: GPL-3.0-or-later
// velarin-encode-programme mp3|aac SECONDS FILE: writes a programme in which every moment can be told by ear, as a
// station would send it, and prints its bytes a second.
#include "support/ears/Programme.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const double seconds = arguments.value(2).toDouble();
    QFile file(arguments.value(3));
    if (seconds <= 0.0 || !file.open(QIODevice::WriteOnly)) {
        std::fputs("usage: velarin-encode-programme mp3|aac SECONDS FILE\n", stderr);
        return 2;
    }
    const bool isMp3 = arguments[1] == QLatin1String("mp3");
    const velarin::test::Programme programme{
        .codec = isMp3 ? velarin::test::Codec::Mp3 : velarin::test::Codec::AacAdts, .length = seconds
    };
    const QByteArray bytes = programme.encoded();
    if (bytes.isEmpty() || file.write(bytes) != bytes.size())
        return 1;
    std::printf("%.3f\n", static_cast<double>(bytes.size()) / seconds);
    return 0;
}
