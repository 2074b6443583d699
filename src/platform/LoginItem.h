// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace velarin {

// Whether the desktop starts the program at login. Main thread only.
class LoginItem
{
public:
    enum class Status
    {
        NotRegistered,
        Enabled,
        // Registered, but it would start another program than this one, or is switched off.
        NeedsRepair,
    };

    virtual ~LoginItem() = default;

    [[nodiscard]] virtual Status status() = 0;
    // Absent on success, else the reason in words for the user. Registering again repairs the entry.
    [[nodiscard]] virtual std::optional<QString> registerItem() = 0;
    [[nodiscard]] virtual std::optional<QString> unregisterItem() = 0;
};

}
