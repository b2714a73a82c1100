// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/Window/Chance.h"
#include "Widgets/Items/Window/ViewScene.h"

namespace lumaro {

/// What a town looks like by its people and its place.
struct TownLook {
    explicit TownLook(const SkyView& view);

    double size = 0; ///< 0 for a village, 1 for a city of millions
    bool isVillage = false;
    bool hasTowers = false; ///< houses that scratch the sky
    bool hasConifers = false;
    bool isByTheSea = false;
    bool isSeaLeft = false;
    bool hasWarmRoofs = false; ///< clay, and walls washed in lime
    bool hasWood = false;      ///< painted, as in the north

    /// How much of the town stands at that part of the width: it makes room for the sea.
    double densityAt(double x) const;
};

/// A layer of land by its distance: 0 is at the window, 1 at the horizon.
struct Distance {
    double far = 0;

    /// A colour there, under the light, faded by the air and the mist between.
    Tone seen(const ViewScene& scene, Tone own) const;
};

void paintHills(QPainter& painter, const ViewScene& scene, const TownLook& look);
void paintSea(QPainter& painter, const ViewScene& scene, const TownLook& look);
void paintTown(QPainter& painter, const ViewScene& scene, const TownLook& look);
/// What the mist takes of everything behind that distance.
void paintMist(QPainter& painter, const ViewScene& scene, Distance distance);

enum class Roof : std::uint8_t { flat, gable, along, mansard, steps, dome, spire, crown };

/// A house by its walls, in the painter's units; roofs and what is on them stand on top.
struct House {
    QRectF walls;
    Roof roof = Roof::flat;
    Tone wall;
    Tone top;
    double pane = 1; ///< how wide its windows are; 0 for none
    std::uint64_t seed = 0;
};

void paintHouse(QPainter& painter, const ViewScene& scene, const House& house, Distance distance);
void paintTree(QPainter& painter, const ViewScene& scene, QPointF foot, double height, bool isConifer,
               Distance distance, Chance& chance);

} // namespace lumaro
