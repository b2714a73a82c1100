// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/NetworkArguments.h"

#include "LumaroControl/Moments.h"
#include "LumaroCore/BoardModel/NoteLook.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Unicode.h"
#include "LumaroCore/Support/Wire.h"

#include <CLI/CLI.hpp>

#include <array>
#include <expected>
#include <istream>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// What was said, and which verb runs on it.
struct NetworkValues {
    explicit NetworkValues(RunVerb& toRun) : run(toRun) {}

    RunVerb& run;
    NetworkOptions network;
    std::string name;
    std::string codeOrLink;
    std::string slot;
    std::string text;
    std::string at;
    std::string to;
    std::string item;
    std::string paper{defaultPaper};
    std::string pin{defaultPin};
    std::string background;
    std::string units = "celsius";
    std::string directory;
    std::string activity;
    std::string country;
    double number = 0;
    std::int64_t minutes = Pomodoro::defaultMinutes;
    bool keep = false;
    bool begin = false;
    bool json = false;
    bool inFile = false;
    bool leave = false;
    bool share = false;
    bool shareNoLonger = false;
    bool isHere = false;
    bool isHereNoLonger = false;

    BoardRequest request(decltype(BoardRequest::Verb::value) verb) const { return {{std::move(verb)}, network.wait}; }
    ExitStatus send(Streams streams, decltype(BoardRequest::Verb::value) verb) const {
        return runBoardVerb(network, streams, request(std::move(verb)));
    }
    ExitStatus sendPlace(Streams streams, BoardRequest::Place place) const {
        place.json = json;
        return send(streams, std::move(place));
    }
    ExitStatus putUp(Streams streams, Payload payload) const {
        SystemRandom ids;
        return send(streams, BoardRequest::PutUp{ids.next(), {std::move(payload)}, parsePoint(at)});
    }
};

namespace {

template <class E>
CLI::IsMember oneOf() {
    std::vector<std::string> names;
    for (const auto name : namesOf(E{})) names.emplace_back(name);
    return CLI::IsMember{names};
}

std::string checkName(const std::string& text) {
    return trimmed(text).empty() ? "a name cannot be empty" : "";
}

// All of standard input without the line ends behind it; why not, for people, in the error.
std::expected<std::string, std::string> noteFrom(std::istream& in) {
    std::string text;
    for (std::array<char, 4096> chunk{}; in && text.size() <= BoardSpec::maxItemJSONBytes;) {
        in.read(chunk.data(), chunk.size());
        text.append(chunk.data(), static_cast<std::size_t>(in.gcount()));
    }
    if (in.bad()) return std::unexpected("standard input cannot be read");
    if (text.size() > BoardSpec::maxItemJSONBytes) return std::unexpected("that is too long for a note");
    if (!isUtf8(text)) return std::unexpected("standard input is not UTF-8");
    while (text.ends_with('\n') || text.ends_with('\r')) text.pop_back();
    return text;
}

std::string checkPoint(const std::string& text) {
    return parsePoint(text) ? "" : "\"" + text + "\" is no place like 640,480";
}

std::string checkMoment(const std::string& text) {
    return parseMoment(text) ? "" : "\"" + text + "\" is no date like 2026-06-01 or 2026-06-01T18:30";
}

Instant present() {
    return Wire::truncatedToMilliseconds(SystemClock{}.now());
}

using V = NetworkValues;

ExitStatus withoutApp(Streams streams, std::string_view verb) {
    return fail(streams, ExitStatus::usage,
                " " + std::string{verb} + ": the application does not do that; leave out --app");
}

// Adds verbs one by one.
class Table {
public:
    Table(CLI::App& app, V& values) : app_(app), values_(values) {}

    void addGlobals() {
        app_.add_option("--profile", values_.network.profile, "the folder of this person's profile")->type_name("DIR");
        app_.add_option("--server", values_.network.server, "the board's server")->type_name("URL");
        app_.add_option("--wait", values_.network.wait, "seconds to wait for the room; 0 asks nobody")
            ->check(CLI::Range(0.0, 3600.0))
            ->type_name("S");
        app_.add_flag("--app", values_.network.app, "ask the application that runs on the profile");
        app_.add_flag("--verbose", values_.network.verbose, "tell on standard error what the network does");
    }

    void addPairing() {
        auto* start =
            verb("start", "Start a board, and print the link for the partner.", [](const V& v, Streams streams) {
                return v.network.app ? v.send(streams, BoardRequest::Start{v.name})
                                     : runStart(v.network, streams, v.name);
            });
        start->add_option("--name", values_.name, "your name, as your partner sees it")
            ->required()
            ->check(checkName)
            ->type_name("NAME");
        auto* join = verb("join", "Join a partner's board.", [](const V& v, Streams streams) {
            const auto slot = fromName<PartnerID>(v.slot);
            return v.network.app ? v.send(streams, BoardRequest::Join{v.codeOrLink, v.name, slot, v.leave})
                                 : runJoin(v.network, streams, {v.name, v.codeOrLink, slot, v.leave});
        });
        join->add_option("CODE|LINK", values_.codeOrLink, "six digits, or a link")->required()->type_name("");
        join->add_option("--name", values_.name, "your name, as your partner sees it")
            ->required()
            ->check(checkName)
            ->type_name("NAME");
        join->add_option("--as", values_.slot, "which of the two you are, where both are on the board")
            ->check(oneOf<PartnerID>());
        join->add_flag("--leave", values_.leave, "leave the board that this profile is on, once the join has worked");
        verb("code", "Print six digits with which the partner joins, once.", [](const V& v, Streams streams) {
            return v.network.app ? v.send(streams, BoardRequest::Code{}) : runCode(v.network, streams);
        });
        verb("link", "Print the link with which the partner joins.", [](const V& v, Streams streams) {
            return v.network.app ? v.send(streams, BoardRequest::Link{}) : runLink(v.network, streams);
        });
        verb("leave", "Take this device off the board.", [](const V& v, Streams streams) {
            return v.network.app ? v.send(streams, BoardRequest::Leave{}) : runLeave(v.network, streams);
        });
    }

    // Of the application alone.
    void addApplication() {
        verb("undo", "Take back the last edit of one's own (--app).",
             [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Undo{}); });
        verb("redo", "Do it again (--app).",
             [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Redo{}); });
        auto* note = verb("quick-note", "Open the composer of a quick note (--app).", [](const V& v, Streams streams) {
            return v.send(streams, BoardRequest::QuickNote{v.text.empty() ? std::nullopt : std::optional{v.text}});
        });
        note->add_option("TEXT", values_.text, "what it says so far")->type_name("");
        auto* presence = verb("presence", "Say what this person is at (--app).", [](const V& v, Streams streams) {
            return v.send(streams, BoardRequest::Presence{fromName<Activity>(v.activity).value_or(Activity::idle)});
        });
        presence->add_option("ACTIVITY", values_.activity, "at the board, or not")
            ->required()
            ->check(oneOf<Activity>())
            ->type_name("");
        auto* listening =
            verb("listening", "Print what is shared of the music here, and what the partner plays (--app).",
                 [](const V& v, Streams streams) {
                     const auto said = v.share || v.shareNoLonger ? std::optional{v.share} : std::nullopt;
                     return v.send(streams, BoardRequest::Listening{v.json, said});
                 });
        listening->add_flag("--json", values_.json, "as one JSON object");
        auto* share = listening->add_flag("--share", values_.share,
                                          "let the partner see the song, the artist and the cover from now on");
        listening->add_flag("--no-share", values_.shareNoLonger, "let them see it no longer")->excludes(share);
        addPlace();
        auto* server =
            verb("server", "Print where the board lives, or say it (--app).", [](const V& v, Streams streams) {
                BoardRequest::Server asked;
                if (!v.text.empty()) asked.address = v.text;
                if (v.isHere || v.isHereNoLonger) asked.here = v.isHere;
                return v.send(streams, asked);
            });
        server->add_option("ADDRESS", values_.text, "of a room; it must answer")->type_name("");
        auto* here = server->add_flag("--here", values_.isHere, "this computer keeps it from now on");
        server->add_flag("--not-here", values_.isHereNoLonger, "it keeps it no longer")->excludes(here);
        auto* secrets = verb("secrets", "Answer where there is no keyring (--app).", [](const V& v, Streams streams) {
            return v.send(streams, BoardRequest::Secrets{v.inFile});
        });
        secrets->add_flag("--file,!--no-file", values_.inFile, "keep the token in a file that only you can read");
        verb("unlock-keyring", "Ask a keyring that would not open once more (--app).",
             [](const V& v, Streams streams) { return v.send(streams, BoardRequest::UnlockKeyring{}); });
    }

    void addPlace() {
        auto* place =
            app_.add_subcommand("place", "Where you are, as your partner sees it, and where they are (--app).");
        place->fallthrough()->require_subcommand(1);
        place->add_flag("--json", values_.json, "as one JSON object");
        Table verbs{*place, values_};
        verbs.verb("show", "Print what is shared, and where the partner is.",
                   [](const V& v, Streams streams) { return v.sendPlace(streams, {}); });
        auto* set = verbs.verb("set", "Say which town you are in.", [](const V& v, Streams streams) {
            BoardRequest::Place asked;
            asked.town = v.text;
            if (!v.country.empty()) asked.country = v.country;
            return v.sendPlace(streams, asked);
        });
        set->add_option("TOWN", values_.text, "how its name begins; \"\" lets the computer find out")
            ->required()
            ->type_name("");
        set->add_option("--country", values_.country, "where it is, two letters like PT")->type_name("CODE");
        auto* share =
            verbs.verb("share", "Let the partner see where you are, or no longer.", [](const V& v, Streams streams) {
                BoardRequest::Place asked;
                asked.share = v.text == "yes";
                return v.sendPlace(streams, asked);
            });
        share->add_option("yes|no", values_.text, "whether they see it")
            ->required()
            ->check(CLI::IsMember{std::vector<std::string>{"yes", "no"}})
            ->type_name("");
        auto* hours = verbs.verb("hours", "Let the partner see your time zone alone, or no longer.",
                                 [](const V& v, Streams streams) {
                                     BoardRequest::Place asked;
                                     asked.hours = v.text == "on";
                                     return v.sendPlace(streams, asked);
                                 });
        hours->add_option("on|off", values_.text, "whether they see it")
            ->required()
            ->check(CLI::IsMember{std::vector<std::string>{"on", "off"}})
            ->type_name("");
        auto* precision = verbs.verb("precision", "Say how exactly.", [](const V& v, Streams streams) {
            BoardRequest::Place asked;
            asked.precision = fromName<HerePrecision>(v.text);
            return v.sendPlace(streams, asked);
        });
        precision->add_option("PRECISION", values_.text, "about a kilometre, or a hundred metres")
            ->required()
            ->check(oneOf<HerePrecision>())
            ->type_name("");
        auto* name = verbs.verb("name", "Name the place you are at.", [](const V& v, Streams streams) {
            BoardRequest::Place asked;
            asked.name = v.text;
            return v.sendPlace(streams, asked);
        });
        name->add_option("NAME", values_.text, "what you call it")->required()->type_name("");
        verbs.verb("forget", "Forget your name for the place you are at.", [](const V& v, Streams streams) {
            BoardRequest::Place asked;
            asked.name = "";
            return v.sendPlace(streams, asked);
        });
    }

    void addLooking() {
        verb("status", "Print where this profile stands.",
             [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Status{}); });
        auto* watch = verb("watch", "Keep the board in step, and print what happens.", [](const V& v, Streams streams) {
            return v.network.app ? withoutApp(streams, "watch") : runWatch(v.network, streams, v.json);
        });
        watch->add_flag("--json", values_.json, "a line of JSON for each message, board and state");
        auto* show = verb("show", "Print the board as this device sees it.",
                          [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Show{v.json}); });
        show->add_flag("--json", values_.json, "the board in canonical form");
        verb("pending", "Print the edits that wait for the room.",
             [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Pending{}); });
        auto* exporting =
            verb("export", "Write the board to a folder, notes as text.", [](const V& v, Streams streams) {
                return v.network.app ? withoutApp(streams, "export") : runExport(v.network, streams, v.directory);
            });
        exporting->add_option("DIR", values_.directory, "the folder")->required()->type_name("");
    }

    void addEdits() {
        auto* move = onItem("move", "Move an item.", [](const V& v, Streams streams) {
            return v.send(streams, BoardRequest::Move{v.item, parsePoint(v.to).value_or(Point{})});
        });
        move->add_option("--to", values_.to, "the place of its middle, of 1600,1000")
            ->required()
            ->check(checkPoint)
            ->type_name("X,Y");
        auto* turn = onItem("turn", "Tilt an item.", [](const V& v, Streams streams) {
            return v.send(streams, BoardRequest::Turn{v.item, v.number});
        });
        turn->add_option("--to", values_.number, "at most 15 either way")->required()->type_name("DEGREES");
        auto* resize = onItem("resize", "Scale an item.", [](const V& v, Streams streams) {
            return v.send(streams, BoardRequest::Resize{v.item, v.number});
        });
        resize->add_option("--to", values_.number, "0.5 to 2")->required()->type_name("SCALE");
        onItem("to-front", "Bring an item in front of all others.",
               [](const V& v, Streams streams) { return v.send(streams, BoardRequest::ToFront{v.item}); });
        onItem("to-back", "Put an item behind all others.",
               [](const V& v, Streams streams) { return v.send(streams, BoardRequest::ToBack{v.item}); });
        onItem("take-down", "Take an item down.",
               [](const V& v, Streams streams) { return v.send(streams, BoardRequest::TakeDown{v.item}); });
        onItem("keep", "Let a note stay up.",
               [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Keep{v.item}); });
        onItem("unkeep", "Let a note come down a day from now.",
               [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Unkeep{v.item}); });
        onItem("lock", "Leave an item as it is until it is unlocked.",
               [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Lock{v.item}); });
        onItem("unlock", "Let an item be changed again.",
               [](const V& v, Streams streams) { return v.send(streams, BoardRequest::Unlock{v.item}); });
        auto* paint = verb("background", "Change the paper of the board.", [](const V& v, Streams streams) {
            const auto background = fromName<BackgroundID>(v.background).value_or(BackgroundID::butter);
            return v.send(streams, BoardRequest::SetBackground{background});
        });
        paint->add_option("NAME", values_.background, "its new colour")
            ->required()
            ->check(oneOf<BackgroundID>())
            ->type_name("");
    }

    void addPut() {
        auto* put = app_.add_subcommand("put", "Put something up, and print its id.");
        put->fallthrough()->require_subcommand(1);
        Table kinds{*put, values_};
        kinds.addNoteAndCountdown();
        kinds.addCards();
    }

private:
    using Act = ExitStatus (*)(const V&, Streams);

    CLI::App* verb(const char* name, const char* what, Act act) {
        auto* added = app_.add_subcommand(name, what);
        added->fallthrough();
        added->callback([&values = values_, act] {
            values.run = [&values, act](Streams streams) { return act(values, streams); };
        });
        return added;
    }
    CLI::App* onItem(const char* name, const char* what, Act act) {
        auto* added = verb(name, what, act);
        added->add_option("ID", values_.item, "the item's id, or how it begins")->required()->type_name("");
        return added;
    }
    CLI::App* kind(const char* name, const char* what, Act act) {
        auto* added = verb(name, what, act);
        added->add_option("--at", values_.at, "the place of its middle; an open spot where there is none")
            ->check(checkPoint)
            ->type_name("X,Y");
        return added;
    }

    void addNoteAndCountdown() {
        auto* note = kind("note", "A note.", [](const V& v, Streams streams) {
            const auto text = v.text == "-" ? noteFrom(streams.in) : v.text;
            if (!text) return fail(streams, ExitStatus::data, " put: " + text.error());
            NotePayload payload{pm::docOfLines(*text), v.paper, v.pin, std::nullopt};
            // Whoever puts it up counts the day from that instant.
            if (!v.keep) payload.expiresAt = present() + BoardSpec::noteLifespan;
            return v.putUp(streams, std::move(payload));
        });
        note->add_option("TEXT", values_.text, "what it says; - reads standard input")->required()->type_name("");
        note->add_option("--paper", values_.paper, "what it is written on")
            ->check(CLI::IsMember(std::vector<std::string>{notePapers.begin(), notePapers.end()}))
            ->type_name("NAME");
        note->add_option("--pin", values_.pin, "the pin or tape that holds it")
            ->check(CLI::IsMember(std::vector<std::string>{notePins.begin(), notePins.end()}))
            ->type_name("NAME");
        note->add_flag("--keep", values_.keep, "let it stay up for longer than a day");
        auto* countdown = kind("countdown", "A countdown.", [](const V& v, Streams streams) {
            return v.putUp(streams, CountdownPayload{parseMoment(v.to).value_or(Instant{}), v.text});
        });
        countdown->add_option("LABEL", values_.text, "to what")->required()->type_name("");
        countdown->add_option("--to", values_.to, "the day, or the instant")
            ->required()
            ->check(checkMoment)
            ->type_name("DATE");
    }

    void addCards() {
        auto* pomodoro = kind("pomodoro", "The block card.", [](const V& v, Streams streams) {
            const auto own = ownSlot(v.network);
            if (!own) return fail(streams, "put", own.error());
            PomodoroPayload timer;
            timer.minutes = v.minutes;
            if (v.begin) timer = Pomodoro::started(timer, v.minutes, *own, present());
            return v.putUp(streams, timer);
        });
        pomodoro->add_option("--minutes", values_.minutes, "the length of a block")
            ->check(CLI::Range(Pomodoro::minMinutes, Pomodoro::maxMinutes))
            ->type_name("N");
        pomodoro->add_flag("--start", values_.begin, "start a block at once");
        auto* timezones = kind("timezones", "The card of the two time zones.", [](const V& v, Streams streams) {
            return v.putUp(streams, TimezonesPayload{fromName<TemperatureUnit>(v.units).value_or(TemperatureUnit{})});
        });
        timezones->add_option("--units", values_.units, "of the temperatures")->check(oneOf<TemperatureUnit>());
        addSlotCard<NowPlayingSlotPayload>("music", "The record of what somebody listens to.");
        addSlotCard<LocationPayload>("location", "The window on where somebody is.");
        addSlotCard<CalendarPayload>("calendar", "The page of somebody's day.");
    }

    template <class Card>
    void addSlotCard(const char* name, const char* what) {
        auto* card = kind(name, what, [](const V& v, Streams streams) {
            const auto own = ownSlot(v.network);
            if (!own) return fail(streams, "put", own.error());
            return v.putUp(streams, Card{fromName<PartnerID>(v.slot).value_or(*own)});
        });
        card->add_option("--of", values_.slot, "whose; your own where nothing is said")->check(oneOf<PartnerID>());
    }

    CLI::App& app_;
    V& values_;
};

} // namespace

NetworkArguments::NetworkArguments(CLI::App& app, RunVerb& run) : values_(std::make_unique<NetworkValues>(run)) {
    Table table{app, *values_};
    table.addGlobals();
    table.addPairing();
    table.addApplication();
    table.addLooking();
    table.addEdits();
    table.addPut();
}

NetworkArguments::~NetworkArguments() = default;

} // namespace lumaro
