// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"

#include <string>
#include <string_view>

namespace lumaro {

/// Gives the file `name` of a folder new bytes: after a crash or a loss of power at any moment it holds the old ones or
/// the new ones, once this has returned the new ones. The folder is made if it is missing. After a fault the old ones
/// are there, or, when only the folder could not be synced, perhaps the new ones.
///
/// The bytes are first written to ".`name`.new"; two calls about one name must not overlap.
[[nodiscard]] FileResult<void> replaceFile(FileSystem& files, const std::string& folder, const std::string& name,
                                           std::string_view bytes);

} // namespace lumaro
