// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/CommandLine.h"

#include "LumaroCore/Support/Wire.h"
#include "LumaroCtl/ApplyVerb.h"
#include "LumaroCtl/NetworkArguments.h"
#include "LumaroCtl/PureVerbs.h"
#include "LumaroCtl/Streams.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

struct Options {
    std::string now;
    std::string at;
    bool lines = false;
    std::string size;
    std::string id;
};

// Reads all of standard input, answers it with `verb`, and ends the answer's line.
template <class Verb>
ExitStatus answer(Streams streams, const std::string& name, Verb verb) {
    std::string input;
    for (std::array<char, 65536> chunk{}; streams.in;) {
        streams.in.read(chunk.data(), chunk.size());
        input.append(chunk.data(), static_cast<std::size_t>(streams.in.gcount()));
    }
    if (streams.in.bad()) return fail(streams, ExitStatus::inOut, " " + name + ": standard input cannot be read");
    const VerbResult result = verb(input);
    if (!result)
        return fail(streams, ExitStatus::data, " " + name + ": " + result.error().path + ": " + result.error().message);
    streams.out << *result << '\n';
    return ExitStatus::ok;
}

std::optional<Size> parseSize(std::string_view text) {
    Size size;
    const char* const end = text.data() + text.size();
    const auto width = std::from_chars(text.begin(), end, size.width);
    if (width.ec != std::errc{} || width.ptr == end || *width.ptr != 'x') return std::nullopt;
    const auto height = std::from_chars(width.ptr + 1, end, size.height);
    if (height.ec != std::errc{} || height.ptr != end) return std::nullopt;
    const bool isSize = std::isfinite(size.width) && std::isfinite(size.height) && size.width >= 0 && size.height >= 0;
    return isSize ? std::optional{size} : std::nullopt;
}

std::optional<Instant> parseInstant(const std::string& text) {
    const char* const last = text.data() + text.size();
    std::int64_t count = 0;
    const auto [end, code] = std::from_chars(text.data(), last, count);
    return code == std::errc{} && end == last ? Wire::date(count) : std::nullopt;
}

std::string checkInstant(const std::string& text) {
    return parseInstant(text) ? "" : "\"" + text + "\" is no instant in milliseconds since 1970";
}

void addApply(CLI::App& app, Options& options, RunVerb& run) {
    auto* verb = app.add_subcommand(
        "apply", "Apply ops to a board.\n\n"
                 "Reads {\"board\":{},\"tombstones\":{\"<uuid>\":ms},\"ops\":[]} and writes\n"
                 "{\"board\":{},\"tombstones\":{},\"applied\":[],\"rejected\":[{\"index\":n,\"reason\":\"\"}]}.\n"
                 "\"tombstones\" may be left out; \"index\" counts the ops that were understood.");
    verb->add_option("--now", options.now, "the time of the batch, in milliseconds since 1970")
        ->required()
        ->check(checkInstant)
        ->type_name("MS");
    verb->add_flag("--lines", options.lines, "answer each line of the input with a line, to its end");
    verb->callback([&] {
        run = [&options](Streams streams) {
            const auto now = parseInstant(options.now).value_or(Instant{});
            if (!options.lines) {
                return answer(streams, "apply", [&](std::string_view input) { return applyRequest(input, now); });
            }
            const bool allRead = applyLines(streams.in, streams.out, now);
            if (streams.in.bad()) return fail(streams, ExitStatus::inOut, " apply: standard input cannot be read");
            return allRead ? ExitStatus::ok : ExitStatus::data;
        };
    });
}

void addBoardAndNote(CLI::App& app, RunVerb& run) {
    auto* board = app.add_subcommand("board", "Read a board and write it in canonical form.");
    board->callback([&run] { run = [](Streams streams) { return answer(streams, "board", canonicalBoard); }; });
    auto* note = app.add_subcommand("note", "Read a note document and print its plain text.");
    note->callback([&run] { run = [](Streams streams) { return answer(streams, "note", plainNote); }; });
}

void addPomodoro(CLI::App& app, Options& options, RunVerb& run) {
    auto* verb = app.add_subcommand("pomodoro", "Read a pomodoro payload and print what the block card shows.");
    verb->add_option("--at", options.at, "the time of the reading, in milliseconds since 1970")
        ->required()
        ->check(checkInstant)
        ->type_name("MS");
    verb->callback([&] {
        run = [&options](Streams streams) {
            const auto at = parseInstant(options.at).value_or(Instant{});
            return answer(streams, "pomodoro", [&](std::string_view input) { return pomodoroReading(input, at); });
        };
    });
}

void addSpot(CLI::App& app, Options& options, RunVerb& run) {
    auto* verb = app.add_subcommand("spot", "Read a board and print where a new item lands on it.");
    verb->add_option("--size", options.size, "the new item's size in points")
        ->required()
        ->check([](const std::string& text) {
            return parseSize(text) ? std::string{} : "\"" + text + "\" is no size like 280x280";
        })
        ->type_name("WxH");
    verb->callback([&] {
        run = [&options](Streams streams) {
            const auto size = parseSize(options.size).value_or(Size{});
            return answer(streams, "spot", [&](std::string_view input) { return landingSpot(input, size); });
        };
    });
}

void addTilt(CLI::App& app, Options& options, RunVerb& run) {
    auto* verb = app.add_subcommand("tilt", "Print the tilt of a new item in degrees, from its id.");
    verb->add_option("UUID", options.id, "the item's id")
        ->required()
        ->check([](const std::string& text) { return UUID::parse(text) ? std::string{} : "Not a UUID: " + text; })
        ->type_name("");
    verb->callback([&] {
        run = [&options](Streams streams) {
            streams.out << tiltText(UUID::parse(options.id).value_or(UUID{})) << '\n';
            return ExitStatus::ok;
        };
    });
}

// The word that stands where a verb should, behind the verbs that were understood.
std::optional<std::string> unknownVerb(const CLI::App& app) {
    const auto* deepest = &app;
    std::string path;
    while (!deepest->get_subcommands().empty()) {
        deepest = deepest->get_subcommands().front();
        path += deepest->get_name() + " ";
    }
    if (deepest->get_require_subcommand_min() == 0) return std::nullopt;
    for (const auto& word : app.remaining(true)) {
        if (!word.starts_with('-')) return path + word;
    }
    return std::nullopt;
}

ExitStatus parseAndRun(std::span<char* const> arguments, Streams streams) {
    CLI::App app{"The board of two people, from a terminal.", "lumaroctl"};
    Options options;
    RunVerb run;
    app.require_subcommand(1);
    addApply(app, options, run);
    addBoardAndNote(app, run);
    addPomodoro(app, options, run);
    addSpot(app, options, run);
    addTilt(app, options, run);
    const NetworkArguments network{app, run};
    app.set_version_flag("--version", "lumaroctl " LUMARO_VERSION, "print the version");
    try {
        app.parse(static_cast<int>(arguments.size()), arguments.data());
    } catch (const CLI::CallForHelp& help) {
        app.exit(help, streams.out, streams.err);
        return ExitStatus::ok;
    } catch (const CLI::CallForVersion& version) {
        streams.out << version.what() << '\n';
        return ExitStatus::ok;
    } catch (const CLI::ParseError& error) {
        if (const auto unknown = unknownVerb(app)) {
            return fail(streams, ExitStatus::usage, ": there is no verb \"" + *unknown + "\" (see --help)");
        }
        return fail(streams, ExitStatus::usage, std::string{": "} + error.what() + " (see --help)");
    }
    return run(streams);
}

} // namespace

int runCommandLine(std::span<char* const> arguments, std::istream& in, std::ostream& out, std::ostream& err) {
    const auto status = parseAndRun(arguments, {in, out, err});
    // A full disk or a closed pipe shows at the latest here.
    if (!out.flush()) {
        return std::to_underlying(fail({in, out, err}, ExitStatus::inOut, ": standard output cannot be written"));
    }
    return std::to_underlying(status);
}

} // namespace lumaro
