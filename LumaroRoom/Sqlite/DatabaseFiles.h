// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroRoom/Store/Store.h"
#include "Platform/Posix/FolderLock.h"

#include <string>

namespace lumaro {

/// Makes this process the only writer of the database in `path`, through a lock on the file beside it that has its name
/// and ".lock". Readers need none.
[[nodiscard]] StoreResult<FolderLock> lockDatabase(const std::string& path);

/// The folder that a path lies in.
std::string folderOf(const std::string& path);

/// Makes that folder, and those above it, where there is none.
[[nodiscard]] StoreResult<void> makeFolderOf(const std::string& path);

/// An empty file for its owner alone, where there is none yet.
[[nodiscard]] StoreResult<void> createPrivately(const std::string& path);

/// A file's fault as one of the store.
StoreError storeError(const FileError& error);

} // namespace lumaro
