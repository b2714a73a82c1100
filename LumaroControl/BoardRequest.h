// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroControl/NewItem.h"
#include "LumaroCore/Protocol/Messages.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <variant>

namespace lumaro {

/// What a verb is called where it travels.
struct VerbName {
    template <std::size_t size>
    consteval VerbName(const char (&name)[size]) { // NOLINT(*-avoid-c-arrays, google-explicit-constructor)
        std::ranges::copy(name, text.begin());
    }
    std::array<char, 16> text{};
};

/// What a verb wants of the process that has the profile. Travels between processes as one line of JSON.
struct BoardRequest {
    /// The id is made by the one who asks: asked twice, it is put up once, and both are answered the same.
    struct PutUp {
        static constexpr std::string_view tag = "put";
        UUID id;
        NewItem item;
        std::optional<Point> at;

        static constexpr auto fields() {
            return std::tuple{Field{"id", &PutUp::id}, Field{"item", &PutUp::item}, Field{"at", &PutUp::at}};
        }
        bool operator==(const PutUp&) const = default;
    };
    struct Move {
        static constexpr std::string_view tag = "move";
        std::string item; ///< how its id begins, in either case; here and below
        Point to;

        static constexpr auto fields() { return std::tuple{Field{"item", &Move::item}, Field{"to", &Move::to}}; }
        bool operator==(const Move&) const = default;
    };
    struct Turn {
        static constexpr std::string_view tag = "turn";
        std::string item;
        double degrees = 0;

        static constexpr auto fields() {
            return std::tuple{Field{"item", &Turn::item}, Field{"degrees", &Turn::degrees}};
        }
        bool operator==(const Turn&) const = default;
    };
    struct Resize {
        static constexpr std::string_view tag = "resize";
        std::string item;
        double scale = 1;

        static constexpr auto fields() {
            return std::tuple{Field{"item", &Resize::item}, Field{"scale", &Resize::scale}};
        }
        bool operator==(const Resize&) const = default;
    };
    /// What needs to know nothing.
    template <VerbName name>
    struct Bare {
        static constexpr std::string_view tag{name.text.data()};

        static constexpr auto fields() { return std::tuple{}; }
        bool operator==(const Bare&) const = default;
    };
    /// What needs to know of no more than the item.
    template <VerbName name>
    struct OnItem {
        static constexpr std::string_view tag{name.text.data()};
        std::string item;

        static constexpr auto fields() { return std::tuple{Field{"item", &OnItem::item}}; }
        bool operator==(const OnItem&) const = default;
    };
    using ToFront = OnItem<"to-front">;
    using ToBack = OnItem<"to-back">;
    using TakeDown = OnItem<"take-down">;
    using Keep = OnItem<"keep">;
    using Unkeep = OnItem<"unkeep">;
    using Lock = OnItem<"lock">;
    using Unlock = OnItem<"unlock">;
    struct SetBackground {
        static constexpr std::string_view tag = "background";
        BackgroundID background = BackgroundID::butter;

        static constexpr auto fields() { return std::tuple{Field{"background", &SetBackground::background}}; }
        bool operator==(const SetBackground&) const = default;
    };
    struct Show {
        static constexpr std::string_view tag = "show";
        bool json = false;

        static constexpr auto fields() { return std::tuple{Field{"json", &Show::json}}; }
        bool operator==(const Show&) const = default;
    };
    using Pending = Bare<"pending">;
    using Status = Bare<"status">;

    // What the application alone can do.

    /// Starts a board of this person's own; answered with its link.
    struct Start {
        static constexpr std::string_view tag = "start";
        std::string name;

        static constexpr auto fields() { return std::tuple{Field{"name", &Start::name}}; }
        bool operator==(const Start&) const = default;
    };
    struct Join {
        static constexpr std::string_view tag = "join";
        std::string codeOrLink;
        std::string name;
        std::optional<PartnerID> slot; ///< who this person is, when asked
        std::optional<bool> leave{};   ///< whether to leave the board that this person is on

        static constexpr auto fields() {
            return std::tuple{Field{"codeOrLink", &Join::codeOrLink}, Field{"name", &Join::name},
                              Field{"slot", &Join::slot}, Field{"leave", &Join::leave}};
        }
        bool operator==(const Join&) const = default;
    };
    using Code = Bare<"code">;
    /// Answered with the board's link, which is made where this device has none.
    using Link = Bare<"link">;
    using Leave = Bare<"leave">;
    using Undo = Bare<"undo">;
    using Redo = Bare<"redo">;
    /// Opens the composer of a quick note, with a text in it perhaps.
    struct QuickNote {
        static constexpr std::string_view tag = "quick-note";
        std::optional<std::string> text;

        static constexpr auto fields() { return std::tuple{Field{"text", &QuickNote::text}}; }
        bool operator==(const QuickNote&) const = default;
    };
    /// Brings the board's window to the front, and joins through the link, if there is one.
    struct Open {
        static constexpr std::string_view tag = "open";
        std::optional<std::string> link;

        static constexpr auto fields() { return std::tuple{Field{"link", &Open::link}}; }
        bool operator==(const Open&) const = default;
    };
    /// What this person is at, until the editor knows better.
    struct Presence {
        static constexpr std::string_view tag = "presence";
        Activity activity = Activity::idle;

        static constexpr auto fields() { return std::tuple{Field{"activity", &Presence::activity}}; }
        bool operator==(const Presence&) const = default;
    };
    /// Answered with what is shared of the music here, and what the partner plays. With `share` it is shared from now
    /// on, or no longer.
    struct Listening {
        static constexpr std::string_view tag = "listening";
        bool json = false;
        std::optional<bool> share;

        static constexpr auto fields() {
            return std::tuple{Field{"json", &Listening::json}, Field{"share", &Listening::share}};
        }
        bool operator==(const Listening&) const = default;
    };
    /// Answered with what is shared of the place here, and where the partner is. What is said counts from now on.
    struct Place {
        static constexpr std::string_view tag = "place";
        bool json = false;
        std::optional<bool> share;
        std::optional<HerePrecision> precision;
        std::optional<std::string> town;    ///< "i'm in …": how its name begins; empty: the computer finds out
        std::optional<std::string> country; ///< of that town, ISO 3166-1, two letters
        std::optional<std::string> name;    ///< the person's own for where they are; empty: forgotten
        std::optional<bool> hours{};        ///< whether the partner sees the time zone, also without a place

        static constexpr auto fields() {
            return std::tuple{Field{"json", &Place::json},           Field{"share", &Place::share},
                              Field{"precision", &Place::precision}, Field{"town", &Place::town},
                              Field{"country", &Place::country},     Field{"name", &Place::name},
                              Field{"hours", &Place::hours}};
        }
        bool operator==(const Place&) const = default;
    };
    /// Answered with where the board lives. What is said counts from now on; an address once a room has answered there.
    struct Server {
        static constexpr std::string_view tag = "server";
        std::optional<std::string> address;
        std::optional<bool> here; ///< whether this computer keeps the room

        static constexpr auto fields() {
            return std::tuple{Field{"address", &Server::address}, Field{"here", &Server::here}};
        }
        bool operator==(const Server&) const = default;
    };
    /// The person's answer where there is no keyring: whether a file of the profile may hold the token.
    struct Secrets {
        static constexpr std::string_view tag = "secrets";
        bool inFile = false;

        static constexpr auto fields() { return std::tuple{Field{"inFile", &Secrets::inFile}}; }
        bool operator==(const Secrets&) const = default;
    };
    /// Asks a keyring that would not open once more.
    using UnlockKeyring = Bare<"unlock-keyring">;

    struct Verb {
        std::variant<PutUp, Move, Turn, Resize, ToFront, ToBack, TakeDown, Keep, Unkeep, Lock, Unlock, SetBackground,
                     Show, Pending, Status, Start, Join, Code, Link, Leave, Undo, Redo, QuickNote, Open, Presence,
                     Listening, Place, Server, Secrets, UnlockKeyring>
            value;

        bool operator==(const Verb&) const = default;
    };

    Verb verb;
    /// How long it may take until the room has answered, in seconds; with 0 the room is not asked at all.
    double wait = 5;

    static constexpr auto fields() {
        return std::tuple{Field{"wait", &BoardRequest::wait}, Field{"verb", &BoardRequest::verb}};
    }
    bool operator==(const BoardRequest&) const = default;
};

} // namespace lumaro
