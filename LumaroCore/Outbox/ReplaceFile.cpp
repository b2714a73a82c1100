// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Outbox/ReplaceFile.h"

namespace lumaro {

FileResult<void> replaceFile(FileSystem& files, const std::string& folder, const std::string& name,
                             std::string_view bytes) {
    if (auto made = files.createDirectories(folder); !made) return made;
    const auto fresh = folder + "/." + name + ".new";
    auto done = files.writeFile(fresh, bytes);
    if (done) done = files.syncFile(fresh);
    if (done) done = files.rename(fresh, folder + "/" + name);
    if (!done) {
        // A full disk gets back what the part of the file takes.
        static_cast<void>(files.removeFile(fresh));
        return done;
    }
    return files.syncDirectory(folder);
}

} // namespace lumaro
