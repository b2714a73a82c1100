// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

namespace lumaro {

/// The media type of an image that the board can hold, told by how its bytes begin; none for anything else.
std::optional<std::string_view> imageTypeOf(std::string_view bytes);

} // namespace lumaro
