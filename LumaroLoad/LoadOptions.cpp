// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/LoadOptions.h"

#include "LumaroCore/BoardModel/BoardSpec.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <map>
#include <sstream>

namespace lumaro {
namespace {

constexpr int usageStatus = 2;

void describe(CLI::App& app, LoadOptions& options) {
    static const std::map<std::string, LoadMode> modes{
        {"edit", LoadMode::edit}, {"join", LoadMode::join}, {"idle", LoadMode::idle}};
    app.add_option("--server", options.server, "The server, http://HOST:PORT")->required();
    app.add_option("--mode", options.mode, "What to measure: edit, join or idle")
        ->transform(CLI::CheckedTransformer(modes));
    app.add_option("--rooms", options.rooms, "Rooms, of two sockets each")->check(CLI::PositiveNumber);
    app.add_option("--rate", options.rate, "Edits a second in each room; left out, a closed loop")
        ->check(CLI::PositiveNumber);
    app.add_option("--window", options.window, "Edits under way in each room of a closed loop")
        ->check(CLI::PositiveNumber);
    app.add_option("--seconds", options.seconds, "How long to measure")->check(CLI::PositiveNumber);
    app.add_option("--warmup", options.warmup, "Seconds of the same before measuring")->check(CLI::NonNegativeNumber);
    app.add_option("--settle", options.settle, "Seconds that idle rooms rest before memory is read")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--items", options.items, "Notes on each board")
        ->check(CLI::Range(std::size_t{2}, BoardSpec::maxLiveItems));
    app.add_option("--pid", options.serverProcess, "The server's process, for its CPU time and memory");
    app.add_option("--threads", options.threads, "Threads of this program")->check(CLI::Range(1, 64));
    app.add_option("--fsync-dir", options.syncDirectory, "Where to measure the file system's own fdatasync")
        ->check(CLI::ExistingDirectory);
    app.add_flag("--json", options.isJson, "One JSON object instead of lines");
}

} // namespace

std::expected<LoadOptions, EarlyEnd> parseOptions(std::span<char* const> arguments) {
    LoadOptions options;
    options.syncDirectory = std::filesystem::temp_directory_path().string();
    CLI::App app{"Puts load on a room server, checks what it answers, and says how long it took.", "lumaro-load"};
    describe(app, options);
    try {
        app.parse(static_cast<int>(arguments.size()), arguments.data());
    } catch (const CLI::ParseError& error) {
        std::ostringstream text;
        const int status = app.exit(error, text, text);
        return std::unexpected(EarlyEnd{text.str(), status == 0 ? 0 : usageStatus});
    }
    return options;
}

} // namespace lumaro
