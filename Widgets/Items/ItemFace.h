// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"
#include "LumaroCore/NoteRender/PMNode.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Presence/Sky.h"
#include "Widgets/Items/ItemPicture.h"
#include "Widgets/Items/Window/SkyView.h"

#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace lumaro {

// What items look like, as values: everything a picture depends on, and nothing else. Texts are ready to be read;
// hours are local, 0 to 24. A card that knows nothing yet says so in `words`.

struct NoteFace {
    PMNode text;
    QString paper;
    QString pin;
    QString until{}; ///< when it comes down, where it does
    double fade = 0; ///< 0 for a fresh note, 1 for one whose day is over
    bool isKept = false;
    bool hidesText = false; ///< while somebody writes on it, the text is drawn by the composer above

    bool operator==(const NoteFace&) const = default;
};

struct PhotoFace {
    ItemPicture picture;
    QString caption;
    std::optional<double> aspect; ///< width over height
    QString words;                ///< shown while there is no picture

    bool operator==(const PhotoFace&) const = default;
};

struct StickerFace {
    ItemPicture picture; ///< cut out: what is not part of it is transparent
    double aspect = 1;
    QString words;
    bool isLifted = false;

    bool operator==(const StickerFace&) const = default;
};

struct DoodleFace {
    DoodlePayload doodle;

    bool operator==(const DoodleFace&) const = default;
};

struct CountdownFace {
    QString figure;
    QString unit;
    QString label;
    bool isThere = false;      ///< the day has come
    bool isCelebrated = false; ///< while it hung here

    bool operator==(const CountdownFace&) const = default;
};

struct MusicFace {
    enum class State : std::uint8_t { none, paused, playing };
    static constexpr int armSteps = 64;

    ItemPicture cover;
    QString title;
    QString artist;
    QString words;
    State state = State::none;
    int armStep = 0; ///< how far the arm has come in over the record, of `armSteps`

    bool operator==(const MusicFace&) const = default;
};

struct WindowFace {
    std::optional<SkyView> view; ///< none: the blind is down
    std::optional<Sky> sky;      ///< of the weather, where it is known
    ItemPicture city;            ///< hangs in place of the view, where there is one
    QString place;
    QString time;
    QString temperature;
    QString words;      ///< of the place: why it is not known, or how old it is
    QString weatherAge; ///< where the weather is old

    bool operator==(const WindowFace&) const = default;
};

struct ClocksFace {
    struct Side {
        QString name;
        QString time;
        QString words;
        std::optional<SkyView> view;
        std::optional<Sky> sky; ///< of the weather, where it is known

        bool operator==(const Side&) const = default;
    };

    Side mine;
    Side theirs;
    QString between;
    QString day; ///< there, where it is another one than here

    bool operator==(const ClocksFace&) const = default;
};

struct DayFace {
    struct Event {
        QString time;
        QString title;

        bool operator==(const Event&) const = default;
    };

    QString weekday;
    QString day;
    QString month;
    std::vector<Event> events;
    int more = 0; ///< events beyond those listed
    QString words;
    QString whose;

    bool operator==(const DayFace&) const = default;
};

struct BlockFace {
    Pomodoro::Face face = Pomodoro::Face::resting;
    bool isCoolDown = false;
    QString figure;
    double progress = 0; ///< 0 to 1
    QString who;

    bool operator==(const BlockFace&) const = default;
};

/// How one item looks. An immutable value that copies share, so it travels through QML as a property.
class ItemFace {
    Q_GADGET
    QML_VALUE_TYPE(itemFace)

public:
    using Value = std::variant<NoteFace, PhotoFace, CountdownFace, MusicFace, WindowFace, ClocksFace, DayFace,
                               BlockFace, StickerFace, DoodleFace>;

    /// An empty note.
    ItemFace() = default;
    template <class Face>
        requires(std::constructible_from<Value, Face> && !std::same_as<std::remove_cvref_t<Face>, ItemFace>)
    ItemFace(Face&& face) : value_(std::make_shared<const Value>(std::forward<Face>(face))) {}

    /// A note without its text, for while somebody writes on it; any other face as it is.
    Q_INVOKABLE lumaro::ItemFace withoutText() const;

    /// A window without what falls before it, for while that moves over the picture; any other face as it is.
    Q_INVOKABLE lumaro::ItemFace withoutFall() const;

    const Value& value() const { return value_ ? *value_ : emptyValue(); }

    /// The face of this kind, when it is one.
    template <class Face>
    const Face* as() const {
        return std::get_if<Face>(&value());
    }

    /// The picture that it shows, if any.
    ItemPicture picture() const;

    bool operator==(const ItemFace& other) const { return value_ == other.value_ || value() == other.value(); }

private:
    static const Value& emptyValue();

    std::shared_ptr<const Value> value_;
};

} // namespace lumaro
