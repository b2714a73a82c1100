// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "Widgets/Board/FacePicture.h"

#include <QtCore/QString>

#include <optional>

namespace lumaro {

/// The disc of a record, to be turned about its own middle. Empty while nothing plays. `discX` and `discY` say where
/// its corner lies from that of the item's paper, in pixels of the view.
class RecordDisc : public lumaro::FacePicture {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isTurning READ isTurning NOTIFY faceChanged)
    Q_PROPERTY(double degreesPerSecond READ degreesPerSecond CONSTANT)
    Q_PROPERTY(double discX READ discX NOTIFY placeChanged)
    Q_PROPERTY(double discY READ discY NOTIFY placeChanged)

public:
    explicit RecordDisc(QQuickItem* parent = nullptr);

    static double degreesPerSecond() { return BoardSpec::diskDegreesPerSecond; }
    /// Whether music plays.
    bool isTurning() const;
    double discX() const;
    double discY() const;

Q_SIGNALS:
    /// Another song plays than the record had before.
    void songBegan();

protected:
    void lay() override;
    void paintLit(QPainter& painter) override;
    bool looksSame(const ItemFace& before, const ItemFace& after) const override;

private:
    struct Song {
        QString title;
        QString artist;

        bool operator==(const Song&) const = default;
    };

    void listen();

    std::optional<Song> song_;
};

} // namespace lumaro
