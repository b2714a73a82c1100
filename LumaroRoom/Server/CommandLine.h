// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Server/ServerConfig.h"
#include "LumaroRoom/Server/Url.h"

#include <expected>
#include <span>
#include <string>
#include <variant>

namespace lumaro {

/// What a command line of `lumaro-room` asks for.
struct ServeCommand {
    ServerConfig config;
};
struct BackupCommand {
    std::string databasePath;
    std::string file;
};
struct RestoreCommand {
    std::string databasePath;
    std::string file;
};
struct CheckCommand {
    std::string databasePath;
};
/// A look at a room from outside.
struct CheckSetupCommand {
    Url url;
};
struct HelpCommand {
    std::string text;
};
using Command = std::variant<ServeCommand, BackupCommand, RestoreCommand, CheckCommand, CheckSetupCommand, HelpCommand>;

/// Reads the arguments, the program's own name first, and the environment; a line for people when they make no sense.
std::expected<Command, std::string> parseCommandLine(std::span<char* const> arguments);

} // namespace lumaro
