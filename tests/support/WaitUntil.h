// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>

namespace velarin::test {

// Runs the event loop until `predicate` holds; false if the deadline passed first. For tests of the real platform:
// logic is tested in virtual time and never waits.
[[nodiscard]] bool waitUntil(
    const std::function<bool()>& predicate, std::chrono::milliseconds deadline = std::chrono::seconds(10));

}
