// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace lumaro {

/// A set of lambdas for `std::visit`; a missing alternative does not compile.
template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};

} // namespace lumaro
