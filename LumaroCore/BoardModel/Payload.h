// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroCore/NoteRender/PMNode.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/Plane.h"
#include "LumaroCore/Support/UUID.h"

#include <array>
#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

namespace lumaro {

/// A note with a little rich text. An unkept note comes down at `expiresAt`; a kept one never does.
struct NotePayload {
    PMNode pm;
    std::string paper; ///< the paper colour's name
    std::string pin;   ///< the name of the pin that holds it
    std::optional<Instant> expiresAt;

    bool isKept() const { return !expiresAt.has_value(); }

    static constexpr auto fields() {
        return std::tuple{Field{"pm", &NotePayload::pm}, Field{"paper", &NotePayload::paper},
                          Field{"pin", &NotePayload::pin}, Field{"expiresAt", &NotePayload::expiresAt}};
    }
    bool operator==(const NotePayload&) const = default;
};

struct PhotoPayload {
    UUID mediaId;
    std::string caption;
    std::optional<Instant> takenAt;
    std::optional<double> aspect; ///< width over height

    static constexpr auto fields() {
        return std::tuple{Field{"mediaId", &PhotoPayload::mediaId}, Field{"caption", &PhotoPayload::caption},
                          Field{"takenAt", &PhotoPayload::takenAt}, Field{"aspect", &PhotoPayload::aspect}};
    }
    bool operator==(const PhotoPayload&) const = default;
};

struct CountdownPayload {
    Instant targetDate;
    std::string label;

    static constexpr auto fields() {
        return std::tuple{Field{"targetDate", &CountdownPayload::targetDate}, Field{"label", &CountdownPayload::label}};
    }
    bool operator==(const CountdownPayload&) const = default;
};

/// A live card of one person: it stores only whose side it shows.
template <ItemKind kind>
struct SlotPayload {
    PartnerID slot = PartnerID::a;

    static constexpr auto fields() { return std::tuple{Field{"slot", &SlotPayload::slot}}; }
    bool operator==(const SlotPayload&) const = default;
};

/// The music of the person in `slot`.
using NowPlayingSlotPayload = SlotPayload<ItemKind::nowPlayingSlot>;
/// The neighbourhood of the person in `slot`.
using LocationPayload = SlotPayload<ItemKind::location>;
/// The calendar day of the person in `slot`.
using CalendarPayload = SlotPayload<ItemKind::calendar>;

enum class TemperatureUnit : std::uint8_t { celsius, fahrenheit };

constexpr std::array<std::string_view, 2> namesOf(TemperatureUnit) {
    return {"celsius", "fahrenheit"};
}

struct TimezonesPayload {
    TemperatureUnit units = TemperatureUnit::celsius;

    static constexpr auto fields() { return std::tuple{Field{"units", &TimezonesPayload::units}}; }
    bool operator==(const TimezonesPayload&) const = default;
};

enum class PomodoroPhase : std::uint8_t { resting, block, coolDown };

constexpr std::array<std::string_view, 3> namesOf(PomodoroPhase) {
    return {"resting", "block", "coolDown"};
}

/// The stored state of the block card; `Pomodoro` has its transitions and readings.
struct PomodoroPayload {
    std::int64_t minutes = 25; ///< length of a focus block
    PomodoroPhase phase = PomodoroPhase::resting;
    std::optional<Instant> startedAt;
    std::optional<PartnerID> startedBy;
    std::optional<Instant> joinedAt; ///< when the other person joined

    static constexpr auto fields() {
        return std::tuple{Field{"minutes", &PomodoroPayload::minutes}, Field{"phase", &PomodoroPayload::phase},
                          Field{"startedAt", &PomodoroPayload::startedAt},
                          Field{"startedBy", &PomodoroPayload::startedBy},
                          Field{"joinedAt", &PomodoroPayload::joinedAt}};
    }
    bool operator==(const PomodoroPayload&) const = default;
};

struct StickerPayload {
    UUID mediaId;
    double aspect = 1; ///< width over height

    static constexpr auto fields() {
        return std::tuple{Field{"mediaId", &StickerPayload::mediaId}, Field{"aspect", &StickerPayload::aspect}};
    }
    bool operator==(const StickerPayload&) const = default;
};

/// One stroke of a doodle. Its points lie in the doodle's own extent, from the top left corner.
struct InkStroke {
    std::string ink;  ///< the ink's name
    double width = 0; ///< the line's width, in points
    std::vector<Point> points;

    static constexpr auto fields() {
        return std::tuple{Field{"c", &InkStroke::ink}, Field{"s", &InkStroke::width}, Field{"p", &InkStroke::points}};
    }
    bool operator==(const InkStroke&) const = default;
};

struct DoodlePayload {
    double width = 0;
    double height = 0;
    std::vector<InkStroke> strokes;
    std::optional<UUID> on; ///< the item it is drawn on; absent on the glass

    Size size() const { return {width, height}; }

    static constexpr auto fields() {
        return std::tuple{Field{"w", &DoodlePayload::width}, Field{"h", &DoodlePayload::height},
                          Field{"strokes", &DoodlePayload::strokes}, Field{"on", &DoodlePayload::on}};
    }
    bool operator==(const DoodlePayload&) const = default;
};

/// What an item holds: one alternative for each `ItemKind`, in its order. The kind is the alternative.
///
/// An immutable value: copies share what they hold, so copying a board, an op or a batch costs no more than its items'
/// places, from any thread. To change one, copy the alternative out and make a new payload of it.
class Payload {
public:
    using Value = std::variant<NotePayload, PhotoPayload, CountdownPayload, NowPlayingSlotPayload, LocationPayload,
                               TimezonesPayload, CalendarPayload, PomodoroPayload, StickerPayload, DoodlePayload>;

    /// An empty note.
    Payload() = default;
    explicit Payload(std::shared_ptr<const Value> value) : value_(std::move(value)) {}
    template <class T>
        requires(std::constructible_from<Value, T> && !std::same_as<std::remove_cvref_t<T>, Payload>)
    Payload(T&& alternative) : value_(std::make_shared<const Value>(std::forward<T>(alternative))) {}

    const Value& value() const { return value_ ? *value_ : emptyValue(); }
    ItemKind kind() const { return static_cast<ItemKind>(value().index()); }

    /// The alternative, when it is this one.
    template <class T>
    const T* as() const {
        return std::get_if<T>(&value());
    }

    void hashInto(Hasher& hasher) const { hasher.add(value()); }
    bool operator==(const Payload& other) const { return value_ == other.value_ || value() == other.value(); }

private:
    static const Value& emptyValue();

    // Empty stands for an empty note, so that a moved-from payload is one too.
    std::shared_ptr<const Value> value_;
};

static_assert(std::variant_size_v<Payload::Value> == namesOf(ItemKind{}).size());

} // namespace lumaro
