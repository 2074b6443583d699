// SPDX-License-Identifier: GPL-3.0-or-later
// A settings file that anything may have happened to: it is read or counts as empty and is kept beside, every key can
// be asked for as every type, and what is written then is read again.
#include "Claim.h"

#include "platform/qt/JsonDefaults.h"
#include "support/FakeFiles.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace velarin;

const QString path = QStringLiteral("/settings.json");
const QString probe = QStringLiteral("probe");

void askForEveryType(const Defaults& defaults, const QString& key)
{
    const auto integer = defaults.integer(key);
    const auto real = defaults.real(key);
    fuzz::claim(!integer || real);
    fuzz::claim(!(defaults.boolean(key) && defaults.string(key)));
    fuzz::claim(!(defaults.strings(key) && defaults.date(key)));
    fuzz::claim(!(defaults.date(key) && defaults.bytes(key)));
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    test::FakeFiles files;
    files.contents.insert(path, content);
    const auto domain = JsonDefaults::readDomain(files, path);
    JsonDefaults defaults(files, path);
    const QStringList keys = domain.value_or(QJsonObject()).keys();
    for (const QString& key : keys)
        askForEveryType(defaults, key);

    defaults.remove(probe);
    defaults.setReal(probe, 0.5);
    const JsonDefaults again(files, path);
    fuzz::claim(again.real(probe) == 0.5);
    fuzz::claim(domain.has_value() != files.contents.contains(path + QStringLiteral(".unreadable")));
    return 0;
}
