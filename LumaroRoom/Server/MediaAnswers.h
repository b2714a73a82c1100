// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Server/ServerHttp.h"

#include <string>
#include <string_view>

// What devices are told about pictures that are written once under a UUID: a board's media, a couple's covers.

namespace lumaro {

/// Nothing is there under this id, or it is no UUID.
ServerResponse noSuchMedia();
/// The bytes are no picture of a type that belongs there.
ServerResponse badMedia(std::string_view message);
/// Other bytes are there under this id.
ServerResponse mediaExists();
/// The picture, which a device's own cache may keep for ever.
ServerResponse mediaResponse(std::string contentType, std::string bytes);

} // namespace lumaro
