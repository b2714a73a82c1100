// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"

#include <string>

namespace lumaro {

/// The fault that an `errno` stands for, with the system's words.
FileError posixError(const std::string& path, int code);

} // namespace lumaro
