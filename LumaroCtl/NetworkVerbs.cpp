// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/NetworkVerbs.h"
#include "LumaroControl/ProfileSocket.h"

#include "LumaroCore/Protocol/ServerAddress.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view defaultServer = "http://127.0.0.1:7700";
// Beyond the time a request may take itself.
constexpr Seconds patience{10};
// Between two attempts to get the profile or somebody's ear.
constexpr Seconds retryInterval{0.05};

std::string environment(const char* name) {
    const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing of ours changes it
    return value == nullptr ? "" : value;
}

std::string defaultProfile() {
    const auto data = environment("XDG_DATA_HOME");
    if (data.starts_with('/')) return data + "/lumaro";
    return environment("HOME") + "/.local/share/lumaro";
}

std::string absolute(const std::string& path) {
    std::error_code code;
    const auto whole = std::filesystem::absolute(path, code).lexically_normal().string();
    return code ? path : whole;
}

VerbFailure failureOf(const FolderLock::Error& error) {
    return std::visit(Overloaded{[](const FolderLock::Held& held) {
                                     const auto owner = held.process == 0 ? "another process"
                                                                          : "process " + std::to_string(held.process);
                                     return VerbFailure{ExitStatus::busy, owner + " has this profile"};
                                 },
                                 [](const FileError& file) { return failureOf(file); }},
                      error);
}

} // namespace

Network::Network(const NetworkOptions& given) : options(given), log(given.verbose ? LogLevel::debug : LogLevel::error) {
}

Profile::Result<Profile> Network::openProfile() {
    return Profile::open(files, ids, absolute(options.profile.empty() ? defaultProfile() : options.profile));
}

Profile::Result<Profile> Network::openPairedProfile() {
    auto profile = openProfile();
    if (!profile || profile->token()) return profile;
    return std::unexpected(VerbFailure{ExitStatus::refused,
                                       "this profile is on no board yet: `lumaroctl start` one, or "
                                       "`lumaroctl join` your partner's"});
}

Profile::Result<std::string> Network::serverFor(const Profile& profile) const {
    auto server = options.server;
    if (server.empty() && profile.token()) server = profile.facts().server;
    if (server.empty()) server = environment("LUMARO_SERVER");
    if (server.empty()) server = defaultServer;
    const auto address = ServerAddress::parse(server);
    if (address && server.contains("://")) return address->url();
    // A board that is on such a server already stays there.
    const bool isRemembered = options.server.empty() && profile.token();
    if (isRemembered && server.starts_with("http://")) return server;
    const bool isOpen = !address && address.error() == ServerAddress::Fault::notEncrypted;
    return std::unexpected(
        VerbFailure{ExitStatus::usage, "\"" + server + "\" is no server like https://board.example" +
                                           (isOpen ? ", and without https one must be nearby" : "")});
}

void Network::pause() {
    const auto wait = sleeper.wait(retryInterval, [this] { loop.quit(); });
    loop.run();
}

Profile::Result<FolderLock> Network::takeLock(const Profile& profile) {
    const auto start = std::chrono::steady_clock::now();
    while (true) {
        auto lock = FolderLock::take(profile.lockPath());
        if (lock) return std::move(*lock);
        const bool isHeld = std::holds_alternative<FolderLock::Held>(lock.error());
        if (!isHeld || std::chrono::steady_clock::now() - start > Seconds{options.wait}) {
            return std::unexpected(failureOf(lock.error()));
        }
        pause();
    }
}

ExitStatus fail(Streams streams, std::string_view verb, const VerbFailure& failure) {
    return fail(streams, failure.status, " " + std::string{verb} + ": " + failure.message);
}

namespace {

Profile::Result<BoardAnswer> answerAsOwner(Network& network, Profile profile, FolderLock lock,
                                           const BoardRequest& request) {
    auto server = network.serverFor(profile);
    if (!server) return std::unexpected(std::move(server.error()));
    auto owner = ProfileOwner::take(std::move(profile), std::move(lock), std::move(*server), network.ports());
    if (!owner) return std::unexpected(std::move(owner.error()));
    if (request.wait > 0) (*owner)->session().client().connect();
    std::optional<BoardAnswer> answer;
    (*owner)->commands().execute(request, [&](BoardAnswer own) {
        answer = std::move(own);
        network.loop.quit();
    });
    if (!answer) network.loop.run();
    // Other processes may have asked meanwhile.
    while ((*owner)->commands().isBusy()) network.pause();
    return std::move(*answer);
}

LocalSocketCall::Answer askOwner(Network& network, const std::string& socket, const std::string& line,
                                 Seconds timeout) {
    LocalSocketCall::Answer answer = std::unexpected(LocalSocketCall::Fault::unreachable);
    const LocalSocketCall call{socket, line, timeout, [&](LocalSocketCall::Answer got) {
                                   answer = std::move(got);
                                   network.loop.quit();
                               }};
    network.loop.run();
    return answer;
}

// The application runs or it does not; nobody takes its place.
Profile::Result<BoardAnswer> askApplication(Network& network, const std::string& line, Seconds timeout) {
    auto folder = network.options.profile.empty() ? defaultProfile() + "-desktop" : network.options.profile;
    const auto socket = absolute(folder) + "/" + std::string{ProfileSocket::ofApplication};
    const auto text = askOwner(network, socket, line, timeout);
    if (!text) {
        return std::unexpected(VerbFailure{ExitStatus::unavailable, "the application does not answer at " + socket});
    }
    if (auto answer = Wire::decode<BoardAnswer>(*text)) return std::move(*answer);
    return std::unexpected(VerbFailure{ExitStatus::busy, "another version of this program runs there"});
}

// Owners come and go between a look at the lock and a call, so both are tried again for a while.
Profile::Result<BoardAnswer> answerAsProfile(Network& network, const BoardRequest& request, const std::string& line,
                                             Seconds timeout) {
    auto profile = network.openPairedProfile();
    if (!profile) return std::unexpected(std::move(profile.error()));
    const auto start = std::chrono::steady_clock::now();
    while (true) {
        auto lock = FolderLock::take(profile->lockPath());
        if (lock) return answerAsOwner(network, std::move(*profile), std::move(*lock), request);
        if (!std::holds_alternative<FolderLock::Held>(lock.error())) return std::unexpected(failureOf(lock.error()));
        if (const auto text = askOwner(network, profile->socketPath(), line, timeout)) {
            auto answer = Wire::decode<BoardAnswer>(*text);
            if (answer) return std::move(*answer);
            return std::unexpected(VerbFailure{ExitStatus::busy, "another version of this program has the profile"});
        }
        if (std::chrono::steady_clock::now() - start > timeout) return std::unexpected(failureOf(lock.error()));
        network.pause();
    }
}

} // namespace

Profile::Result<BoardAnswer> answerTo(Network& network, const BoardRequest& request) {
    const auto line = Wire::encode(request);
    if (!line) return std::unexpected(VerbFailure{ExitStatus::data, "the text is not UTF-8"});
    const Seconds timeout = Seconds{request.wait} + patience;
    return network.options.app ? askApplication(network, *line, timeout)
                               : answerAsProfile(network, request, *line, timeout);
}

ExitStatus runBoardVerb(const NetworkOptions& options, Streams streams, const BoardRequest& request) {
    Network network{options};
    const std::string verb{std::visit([]<class Verb>(const Verb&) { return Verb::tag; }, request.verb.value)};
    const auto answer = answerTo(network, request);
    if (!answer) return fail(streams, verb, answer.error());
    streams.out << answer->out;
    if (answer->status != 0) {
        return fail(streams, static_cast<ExitStatus>(answer->status),
                    " " + verb + ": " + answer->err.substr(0, answer->err.find('\n')));
    }
    streams.err << answer->err;
    return ExitStatus::ok;
}

Profile::Result<PartnerID> ownSlot(const NetworkOptions& options) {
    Network network{options};
    if (options.app) {
        const auto status = answerTo(network, {{BoardRequest::Status{}}, options.wait});
        if (!status) return std::unexpected(status.error());
        if (const auto slot = slotInStatus(status->out)) return *slot;
        return std::unexpected(VerbFailure{ExitStatus::refused, "the application is on no board"});
    }
    const auto profile = network.openPairedProfile();
    if (!profile) return std::unexpected(profile.error());
    return profile->token()->slot;
}

namespace {

FileResult<void> writeExport(FileSystem& files, const std::string& directory, const std::string& text,
                             const Board& board) {
    const auto notes = directory + "/notes";
    if (auto made = files.createDirectories(notes); !made) return made;
    if (auto put = files.writeFile(directory + "/board.json", text); !put) return put;
    for (const auto& item : board.items) {
        const auto* note = item.payload.as<NotePayload>();
        if (note == nullptr) continue;
        const auto path = notes + "/" + item.id.lowerString() + ".txt";
        if (auto put = files.writeFile(path, note->pm.plainText() + "\n"); !put) return put;
    }
    return {};
}

} // namespace

ExitStatus runExport(const NetworkOptions& options, Streams streams, const std::string& directory) {
    Network network{options};
    const auto answer = answerTo(network, {{BoardRequest::Show{.json = true}}, options.wait});
    if (!answer) return fail(streams, "export", answer.error());
    const auto board = Wire::decode<Board>(answer->out);
    if (!board) return fail(streams, ExitStatus::data, " export: " + answer->err);
    if (const auto done = writeExport(network.files, absolute(directory), answer->out, *board); !done) {
        return fail(streams, "export", failureOf(done.error()));
    }
    return ExitStatus::ok;
}

} // namespace lumaro
