// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// What a music card tells of its track in full; of the album and the player it tells nothing. Empty when nothing
/// plays. A plain value.
struct TrackWords {
    Q_GADGET
    QML_VALUE_TYPE(trackWords)
    Q_PROPERTY(bool isThere MEMBER isThere CONSTANT)
    Q_PROPERTY(bool isPlaying MEMBER isPlaying CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString artist MEMBER artist CONSTANT)
    Q_PROPERTY(QString position MEMBER position CONSTANT)

public:
    bool isThere = false;
    bool isPlaying = false;
    QString title{};
    QString artist{};
    QString position{}; ///< "1:23 of 3:45", and whether it is paused

    bool operator==(const TrackWords&) const = default;
};

} // namespace lumaro
