// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/LoginItem.h"

namespace velarin::test {

class FakeLoginItem final : public LoginItem
{
public:
    Status status() override { return current; }
    std::optional<QString> registerItem() override
    {
        ++registrations;
        if (!failure)
            current = Status::Enabled;
        return failure;
    }
    std::optional<QString> unregisterItem() override
    {
        if (!failure)
            current = Status::NotRegistered;
        return failure;
    }

    Status current{ Status::NotRegistered };
    // What registering answers.
    std::optional<QString> failure;
    int registrations{ 0 };
};

}
