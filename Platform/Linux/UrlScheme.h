// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"

#include <expected>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// Makes this program the one that opens this person's "lumaro:" links, when it was put there without a package: an
/// entry of its own among the person's programs, and a line among what they open with what. An installed entry has the
/// links already, and a person who chose another program for them keeps it.
class UrlScheme {
public:
    struct Folders {
        std::string data;                    ///< the person's
        std::string config;                  ///< the person's
        std::vector<std::string> systemData; ///< what is installed for everybody
    };

    /// The file system outlives this. `command` is the program's path and its arguments; the link is added to them.
    UrlScheme(FileSystem& files, Folders folders, std::vector<std::string> command)
        : files_(files), folders_(std::move(folders)), command_(std::move(command)) {}

    /// Where this person's desktop looks.
    static Folders userFolders();

    /// At every start. The error is for the log.
    [[nodiscard]] std::expected<void, std::string> claim();

private:
    bool isInstalled() const;
    FileResult<void> keep(const std::string& folder, const std::string& name, const std::string& text);

    FileSystem& files_;
    Folders folders_;
    std::vector<std::string> command_;
};

} // namespace lumaro
