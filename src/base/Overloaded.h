// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace velarin {

// Several lambdas as one visitor: std::visit(Overloaded{ [](A) {...}, [](B) {...} }, variant).
template<typename... Cases>
struct Overloaded : Cases...
{
    using Cases::operator()...;
};
template<typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

}
