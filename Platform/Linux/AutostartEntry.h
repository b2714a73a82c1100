// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Services/LoginItem.h"

#include <string>
#include <vector>

namespace lumaro {

/// A desktop entry in the folder of those that are started at login.
class AutostartEntry final : public LoginItem {
public:
    struct Program {
        std::string id;                   ///< the file's name, without ".desktop"
        std::string name;                 ///< what people read
        std::vector<std::string> command; ///< the program's path and its arguments
    };

    /// The file system outlives the entry.
    AutostartEntry(FileSystem& files, std::string folder, Program program)
        : files_(files), folder_(std::move(folder)), program_(std::move(program)) {}

    /// Where this person's desktop looks for such entries.
    static std::string userFolder();

    /// Not when people have switched it off with their desktop's own settings.
    bool isEnabled() override;
    [[nodiscard]] std::expected<void, std::string> enable() override;
    [[nodiscard]] std::expected<void, std::string> disable() override;

private:
    std::string fileName() const { return program_.id + ".desktop"; }

    FileSystem& files_;
    std::string folder_;
    Program program_;
};

} // namespace lumaro
