// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace lumaro {

/// The text as it may stand in a URL (RFC 3986): ASCII letters, digits and what is listed as they are, every other byte
/// as "%" and two hexadecimal digits. The unreserved marks are left as they are unless another list is given.
std::string percentEncoded(std::string_view text, std::string_view leftAsTheyAre = "-._~");

} // namespace lumaro
