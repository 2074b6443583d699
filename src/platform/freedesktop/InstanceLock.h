// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <chrono>

namespace velarin {

// A lock that the kernel drops with the process that holds it, however that ends (flock(2)); the file stays.
class InstanceLock
{
public:
    explicit InstanceLock(QString path);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // False if another process still holds the lock after `patience`. Missing folders are made. A folder that cannot be
    // written locks nobody out: then there is nothing to protect, and the answer is true.
    [[nodiscard]] bool take(std::chrono::milliseconds patience);

private:
    [[nodiscard]] bool open();

    QString m_path;
    int m_descriptor{ -1 };
};

}
