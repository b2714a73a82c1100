// SPDX-License-Identifier: Apache-2.0
#pragma once

// Everything that crosses a room's socket: one JSON object a frame, but for the two heartbeat frames.

#include "LumaroCore/BoardModel/Op.h"
#include "LumaroCore/Presence/Here.h"
#include "LumaroCore/Presence/NowPlaying.h"
#include "LumaroCore/Protocol/Activity.h"
#include "LumaroCore/Protocol/Calendar.h"
#include "LumaroCore/Protocol/Partners.h"
#include "LumaroCore/Protocol/ServerErrorCode.h"

#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <variant>
#include <vector>

namespace lumaro {

inline constexpr std::string_view heartbeatFrame = "hb";
inline constexpr std::string_view heartbeatAck = "hb-ack";
/// The header of the upgrade request that names the device.
inline constexpr std::string_view deviceIdHeader = "x-lmr-device";
/// Close code of a socket whose token is no longer accepted.
inline constexpr int closeUnauthorized = 4401;

/// What a device says to its room. Written with "v" and "type" first.
struct ClientMessage {
    struct Ops {
        static constexpr std::string_view tag = "ops";
        UUID batchId;
        std::vector<Op> ops;

        static constexpr auto fields() { return std::tuple{Field{"batchId", &Ops::batchId}, Field{"ops", &Ops::ops}}; }
        bool operator==(const Ops&) const = default;
    };
    /// Music and place that are not known are written as null.
    struct Presence {
        static constexpr std::string_view tag = "presence";
        std::optional<NowPlaying> nowPlaying;
        std::optional<Here> here;
        Activity activity = Activity::idle;
        std::optional<std::string> zone; ///< the IANA name of the time zone, where that is shared without a place
        std::optional<Instant> seen;     ///< everything that the partner put up until then has been seen

        static constexpr auto fields() {
            return std::tuple{FieldIfKnown{"nowPlaying", &Presence::nowPlaying}, FieldIfKnown{"here", &Presence::here},
                              Field{"activity", &Presence::activity}, FieldIfKnown{"zone", &Presence::zone},
                              FieldIfKnown{"seen", &Presence::seen}};
        }
        bool operator==(const Presence&) const = default;
    };

    using Value = std::variant<Ops, Presence>;
    Value value;

    bool operator==(const ClientMessage&) const = default;
};

/// The cases of `ServerMessage`. They stand outside of it because their default values must be known where its variant
/// of them is.
struct ServerMessageCases {
    /// The start of a session, or a correction of it: the room's whole board.
    struct Welcome {
        static constexpr std::string_view tag = "welcome";
        PartnerID partner = PartnerID::a; ///< the slot of the device that reads this
        Board board;
        PartnerSet roster; ///< who is online
        std::optional<SlotNames> names;
        PartnerSet paired = PartnerSet::both();

        static constexpr auto fields() {
            return std::tuple{Field{"partner", &Welcome::partner}, Field{"board", &Welcome::board},
                              Field{"roster", &Welcome::roster}, Field{"names", &Welcome::names},
                              FieldOr{"paired", &Welcome::paired, PartnerSet::both()}};
        }
        bool operator==(const Welcome&) const = default;
    };
    struct Roster {
        static constexpr std::string_view tag = "roster";
        PartnerSet online;
        std::optional<SlotNames> names;
        PartnerSet paired = PartnerSet::both();

        static constexpr auto fields() {
            return std::tuple{Field{"online", &Roster::online}, Field{"names", &Roster::names},
                              FieldOr{"paired", &Roster::paired, PartnerSet::both()}};
        }
        bool operator==(const Roster&) const = default;
    };
    /// Ops that took effect. Those a reader does not know are left out on reading.
    struct Ops {
        static constexpr std::string_view tag = "ops";
        UUID batchId;
        PartnerID author = PartnerID::a;
        std::vector<Op> ops;

        static constexpr auto fields() {
            return std::tuple{Field{"batchId", &Ops::batchId}, Field{"author", &Ops::author}, Field{"ops", &Ops::ops}};
        }
        bool operator==(const Ops&) const = default;
    };
    /// The batch is in the room's store, and will be after any crash.
    struct Ack {
        static constexpr std::string_view tag = "ack";
        UUID batchId;

        static constexpr auto fields() { return std::tuple{Field{"batchId", &Ack::batchId}}; }
        bool operator==(const Ack&) const = default;
    };
    struct Presence {
        static constexpr std::string_view tag = "presence";
        PartnerID from = PartnerID::a;
        std::optional<NowPlaying> nowPlaying;
        std::optional<Here> here;
        Activity activity = Activity::idle;
        std::optional<std::string> zone;
        std::optional<Instant> seen;

        static constexpr auto fields() {
            return std::tuple{Field{"from", &Presence::from},        FieldIfKnown{"nowPlaying", &Presence::nowPlaying},
                              FieldIfKnown{"here", &Presence::here}, Field{"activity", &Presence::activity},
                              FieldIfKnown{"zone", &Presence::zone}, FieldIfKnown{"seen", &Presence::seen}};
        }
        bool operator==(const Presence&) const = default;
    };
    struct Calendar {
        static constexpr std::string_view tag = "calendar";
        PartnerID slot = PartnerID::a;
        CalendarStatus status = CalendarStatus::notConnected;
        std::optional<CalendarDay> day;

        static constexpr auto fields() {
            return std::tuple{Field{"slot", &Calendar::slot}, Field{"status", &Calendar::status},
                              Field{"day", &Calendar::day}};
        }
        bool operator==(const Calendar&) const = default;
    };
    /// The red thread was tied.
    struct Thread {
        static constexpr std::string_view tag = "thread";
        Instant tiedAt;

        static constexpr auto fields() { return std::tuple{Field{"threadTiedAt", &Thread::tiedAt}}; }
        bool operator==(const Thread&) const = default;
    };
    struct Error {
        static constexpr std::string_view tag = "error";
        ServerErrorCode code;
        std::string message;

        static constexpr auto fields() {
            return std::tuple{Field{"code", &Error::code}, Field{"message", &Error::message}};
        }
        bool operator==(const Error&) const = default;
    };
};

/// What a room says to a device. Written with "v" and "type" first.
struct ServerMessage {
    using Welcome = ServerMessageCases::Welcome;
    using Roster = ServerMessageCases::Roster;
    using Ops = ServerMessageCases::Ops;
    using Ack = ServerMessageCases::Ack;
    using Presence = ServerMessageCases::Presence;
    using Calendar = ServerMessageCases::Calendar;
    using Thread = ServerMessageCases::Thread;
    using Error = ServerMessageCases::Error;

    using Value = std::variant<Welcome, Roster, Ops, Ack, Presence, Calendar, Thread, Error>;
    Value value;

    /// The "type" of the message.
    std::string_view caseName() const;

    bool operator==(const ServerMessage&) const = default;
};

} // namespace lumaro
