// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/CommandLine.h"

#include "LumaroCore/Support/OneLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <map>
#include <optional>
#include <thread>
#include <utility>

namespace lumaro {
namespace {

const std::map<std::string, LogLevel> logLevels{
    {"debug", LogLevel::debug}, {"info", LogLevel::info}, {"error", LogLevel::error}};

struct Listen {
    std::string address;
    std::uint16_t port = 0;
};

std::optional<Listen> parseListen(const std::string& text) {
    const auto colon = text.rfind(':');
    if (colon == std::string::npos) return std::nullopt;
    auto address = text.substr(0, colon);
    if (address.starts_with('[') && address.ends_with(']')) address = address.substr(1, address.size() - 2);
    Listen listen{address};
    const auto* const last = text.data() + text.size();
    const auto [end, code] = std::from_chars(text.data() + colon + 1, last, listen.port);
    if (code != std::errc{} || end != last || !IpAddress::parse(address)) return std::nullopt;
    return listen;
}

std::string checkListen(const std::string& text) {
    return parseListen(text) ? "" : "\"" + text + "\" is no address and port like 127.0.0.1:7700 or [::]:7700";
}

std::string checkUrl(const std::string& text) {
    return Url::parse(text) ? "" : "\"" + text + "\" is no http or https URL";
}

std::string checkDatabase(const std::string& text) {
    return text.find("://") == std::string::npos ? "" : "\"" + text + "\" is no file, and this build stores in files";
}

std::string checkRange(const std::string& text) {
    return IpRange::parse(text) ? "" : "\"" + text + "\" is no address and no network like 10.0.0.0/8";
}

std::string checkWindowPage(const std::string& text) {
    return isWindowPage(text) ? "" : "\"" + text + "\" is no https URL, and no http URL of this computer";
}

// The key itself is in no message.
std::string checkWindowKey(const std::string& text) {
    return isWindowKey(text) ? "" : "a key is 1 to 256 visible ASCII characters";
}

std::string defaultDatabase() {
    const char* const data = std::getenv("XDG_DATA_HOME"); // NOLINT(concurrency-mt-unsafe): no thread runs yet
    if (data != nullptr && *data == '/') return std::string{data} + "/lumaro-room/room.db";
    const char* const home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe)
    return std::string{home == nullptr ? "" : home} + "/.local/share/lumaro-room/room.db";
}

std::size_t defaultThreads() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
}

// As they stand on the command line.
struct Options {
    std::string listen = "127.0.0.1:7700";
    std::string database = defaultDatabase();
    std::string publicURL;
    std::string certificate;
    std::string key;
    std::vector<std::string> proxies;
    std::vector<std::string> onlyFrom;
    WindowKey windowKey;
    std::string logLevel = "info";
    std::string file;
    ServerConfig config;
};

CLI::Option* addOption(CLI::App& app, const std::string& flag, auto& value, const std::string& help) {
    std::string environment = "LUMARO_ROOM_" + flag.substr(2);
    std::ranges::transform(environment, environment.begin(),
                           [](unsigned char c) { return c == '-' ? '_' : static_cast<char>(std::toupper(c)); });
    return app.add_option(flag, value, help)->envname(environment);
}

void addPlaces(CLI::App& app, Options& options) {
    addOption(app, "--listen", options.listen, "address and port to listen on; port 0 takes a free one")
        ->check(checkListen)
        ->type_name("ADDR:PORT")
        ->capture_default_str();
    addOption(app, "--database", options.database, "file that holds all boards")
        ->check(checkDatabase)
        ->type_name("PATH")
        ->capture_default_str();
    addOption(app, "--public-url", options.publicURL, "what links begin with; that of the address when left out")
        ->check(checkUrl)
        ->type_name("URL");
    auto* certificate = addOption(app, "--tls-cert", options.certificate, "certificate with its chain, PEM")
                            ->check(CLI::ExistingFile)
                            ->type_name("PATH");
    addOption(app, "--tls-key", options.key, "key of the certificate, PEM")
        ->check(CLI::ExistingFile)
        ->type_name("PATH")
        ->needs(certificate);
    addOption(app, "--trusted-proxies", options.proxies, "addresses and networks whose X-Forwarded-For counts")
        ->delimiter(',')
        ->check(checkRange)
        ->type_name("RANGE,...");
    addOption(app, "--only-from", options.onlyFrom, "addresses and networks that may connect; all when left out")
        ->delimiter(',')
        ->check(checkRange)
        ->type_name("RANGE,...");
    addOption(app, "--weather-upstream", options.config.weatherUpstream, "forecast service")
        ->check(checkUrl)
        ->type_name("URL")
        ->capture_default_str();
    auto* page = addOption(app, "--window-page", options.windowKey.page, "page that draws the partner's city")
                     ->check(checkWindowPage)
                     ->type_name("URL");
    addOption(app, "--window-key", options.windowKey.key, "what that page asks for; best given by the environment")
        ->check(checkWindowKey)
        ->type_name("KEY")
        ->needs(page);
}

void addNumbers(CLI::App& app, Options& options) {
    auto& limits = options.config.limits;
    options.config.threads = defaultThreads();
    addOption(app, "--threads", options.config.threads, "threads for rooms and connections; the cores, at most 4")
        ->check(CLI::Range(1, 64))
        ->type_name("N");
    addOption(app, "--messages-per-second", limits.messagesPerSecond, "what a socket may send for long")
        ->check(CLI::Range(1.0, 1e9))
        ->type_name("N")
        ->capture_default_str();
    addOption(app, "--burst", limits.messageBurst, "what a socket may send at once")
        ->check(CLI::Range(1.0, 1e9))
        ->type_name("N")
        ->capture_default_str();
    addOption(app, "--sockets-per-address", limits.socketsPerOrigin, "sockets from one address")
        ->check(CLI::Range(1, 1'000'000'000))
        ->type_name("N")
        ->capture_default_str();
    addOption(app, "--log-level", options.logLevel, "least level that is logged")
        ->check(CLI::IsMember(logLevels))
        ->type_name("LEVEL")
        ->capture_default_str();
}

std::expected<Command, std::string> serveCommand(Options& options) {
    auto& config = options.config;
    const auto listen = parseListen(options.listen).value_or(Listen{});
    config.address = listen.address;
    config.port = listen.port;
    config.databasePath = options.database;
    config.publicURL = options.publicURL.substr(0, options.publicURL.find_last_not_of('/') + 1);
    if (options.certificate.empty() != options.key.empty()) return std::unexpected("--tls-cert: requires --tls-key");
    if (!options.certificate.empty()) config.tls = ServerConfig::Tls{options.certificate, options.key};
    if (options.windowKey.page.empty() != options.windowKey.key.empty()) {
        return std::unexpected("--window-page: requires --window-key");
    }
    if (!options.windowKey.page.empty()) config.windowKey = std::move(options.windowKey);
    for (const auto& range : options.proxies)
        config.trustedProxies.push_back(IpRange::parse(range).value_or(IpRange{}));
    for (const auto& range : options.onlyFrom) config.onlyFrom.push_back(IpRange::parse(range).value_or(IpRange{}));
    config.logLevel = logLevels.at(options.logLevel);
    return ServeCommand{std::move(config)};
}

} // namespace

std::expected<Command, std::string> parseCommandLine(std::span<char* const> arguments) {
    CLI::App app{"The room where two people's devices meet, and the pairing service that brings them there.",
                 "lumaro-room"};
    app.footer("With no subcommand it serves until SIGTERM or SIGINT. lumaro-room(1) says more.");
    app.set_version_flag("--version", "lumaro-room " LUMARO_VERSION, "print the version");
    Options options;
    addPlaces(app, options);
    addNumbers(app, options);
    app.require_subcommand(0, 1);
    app.fallthrough(); // the database may be named behind the subcommand
    auto* backup = app.add_subcommand("backup", "Copy the database to FILE, while the server runs or not.");
    backup->add_option("FILE", options.file, "the copy, in place of what is there")->required();
    auto* restore = app.add_subcommand("restore", "Put the copy in FILE in the database's place; the server is down.");
    restore->add_option("FILE", options.file, "what backup made")->required();
    auto* check = app.add_subcommand("check", "Read the whole database and say whether it is sound.");
    auto* checkSetup =
        app.add_subcommand("check-setup", "Look at the room at URL as a device would, and say what is wrong.");
    checkSetup->add_option("URL", options.file, "the room, as people reach it")->required()->check(checkUrl);
    try {
        app.parse(static_cast<int>(arguments.size()), arguments.data());
    } catch (const CLI::CallForHelp&) {
        return HelpCommand{app.help()};
    } catch (const CLI::CallForVersion& version) {
        return HelpCommand{version.what()};
    } catch (const CLI::ParseError& error) {
        return std::unexpected(onOneLine(error.what()));
    }
    if (*backup) return BackupCommand{options.database, options.file};
    if (*restore) return RestoreCommand{options.database, options.file};
    if (*check) return CheckCommand{options.database};
    if (*checkSetup) return CheckSetupCommand{Url::parse(options.file).value_or(Url{})};
    return serveCommand(options);
}

} // namespace lumaro
