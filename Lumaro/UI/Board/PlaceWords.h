// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/LiveContext.h"
#include "LumaroCore/BoardModel/Payload.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace lumaro {

/// What is known of the place where a person is, in words; empty when nothing is. A plain value.
struct PlaceWords {
    Q_GADGET
    QML_VALUE_TYPE(placeWords)
    Q_PROPERTY(bool isThere MEMBER isThere CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString missing MEMBER missing CONSTANT)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(QString town MEMBER town CONSTANT)
    Q_PROPERTY(QString since MEMBER since CONSTANT)
    Q_PROPERTY(QString weather MEMBER weather CONSTANT)
    Q_PROPERTY(QString range MEMBER range CONSTANT)
    Q_PROPERTY(QString wind MEMBER wind CONSTANT)
    Q_PROPERTY(QString age MEMBER age CONSTANT)
    Q_PROPERTY(QString clock MEMBER clock CONSTANT)
    Q_PROPERTY(QString position MEMBER position CONSTANT)

public:
    bool isThere = false;
    QString title{};    ///< whose place it is
    QString missing{};  ///< what is said where no place is known
    QString label{};    ///< as the card has it
    QString town{};     ///< unless it is the label
    QString since{};    ///< "since 14:05"
    QString weather{};  ///< "rain, 17°, feels like 15°"
    QString range{};    ///< "12° to 19° today"
    QString wind{};     ///< "a breeze from the west"
    QString age{};      ///< of the weather
    QString clock{};    ///< "15:05, Europe/Lisbon"
    QString position{}; ///< "38.71, -9.13": the digits that travel

    bool operator==(const PlaceWords&) const = default;
};

/// "17°", in whole degrees.
QString temperature(double celsius, bool isFahrenheit);

/// What stands between this person and their place on the partner's board.
enum class PlaceHurdle : std::uint8_t {
    none,       ///< the partner is told
    notShared,  ///< they were not asked, or said no
    denied,     ///< the computer's person does not let this program know
    restricted, ///< the computer does not offer it
    waiting,    ///< for the first position
};

/// What denies a position is told while another search is under way: it seldom ends better.
PlaceHurdle placeHurdle(const PlaceState& place, const std::optional<Here>& here);

/// "14:05" of this day, "3 may, 14:05" of any other. Both moments in that zone.
QString momentWords(Instant moment, Instant now, const QTimeZone& zone);
/// What is said of a person of whom no place is known.
QString noPlace(PartnerID slot, const LiveContext& live);
/// What the window of that person tells in full.
PlaceWords placeWords(const LocationPayload& card, const LiveContext& live);
/// The country with that ISO 3166-1 code, in lower case; the code itself when nobody knows it.
QString countryName(std::string_view code);

} // namespace lumaro
