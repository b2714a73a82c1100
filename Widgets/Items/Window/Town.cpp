// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/LandParts.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace lumaro {
namespace {

constexpr std::uint64_t ofTown = 41;
constexpr std::uint64_t ofCharacter = 43;

constexpr std::array<Tone, 6> limeWalls{
    {{240, 228, 208}, {236, 214, 182}, {232, 200, 168}, {226, 210, 196}, {238, 222, 190}, {222, 188, 164}}};
constexpr std::array<Tone, 6> brickWalls{
    {{190, 142, 122}, {206, 184, 160}, {176, 128, 112}, {198, 190, 178}, {216, 200, 176}, {168, 152, 146}}};
constexpr std::array<Tone, 6> woodWalls{
    {{184, 84, 72}, {226, 190, 120}, {226, 222, 210}, {134, 154, 160}, {206, 132, 92}, {150, 166, 138}}};
constexpr std::array<Tone, 3> clayRoofs{{{196, 116, 84}, {182, 102, 76}, {206, 132, 98}}};
constexpr std::array<Tone, 3> slateRoofs{{{112, 114, 124}, {126, 104, 98}, {98, 104, 116}}};
constexpr std::array<Tone, 4> towerWalls{{{156, 168, 182}, {176, 178, 180}, {140, 154, 172}, {186, 176, 166}}};

/// One row of houses, by its distance. Heights are parts of the view's.
struct RowPlan {
    Distance distance;
    double base = 0; ///< of its ground, from the bottom
    double low = 0;  ///< of walls
    double high = 0;
    double narrow = 0; ///< of widths
    double wide = 0;
    double gap = 0; ///< the chance of a gap after a house
    double pane = 0;
    double trees = 0; ///< the chance of a tree in a gap
};

class TownPainter {
public:
    TownPainter(QPainter& painter, const ViewScene& scene, const TownLook& look)
        : painter_(painter), scene_(scene), look_(look), chance_(scene.view.scenery.seed, ofTown) {}

    void paintRow(const RowPlan& plan) {
        const double height = scene_.rect.height();
        double x = scene_.rect.left() - height * chance_.between(0, plan.wide);
        while (x < scene_.rect.right()) {
            const double width = height * chance_.between(plan.narrow, plan.wide);
            const double share = look_.densityAt((x + width / 2 - scene_.rect.left()) / scene_.rect.width());
            const double tall = plan.low + (plan.high - plan.low) * std::pow(chance_.part(), 1.7);
            const bool isFree = chance_.happens(plan.gap);
            const auto seed = chance_.next();
            // Each place draws the same chances, whether a house stands there or not.
            if (share > 0.12 && !isFree)
                paintOne(plan, {x, width, tall * (0.5 + 0.5 * share)}, seed);
            else
                paintTrees(plan, x, width, share, Chance{seed});
            x += width * (isFree ? 0.8 : 1) + (look_.isVillage ? height * 0.02 : 0);
        }
        paintMist(painter_, scene_, plan.distance);
    }

    /// Towers that stand together, the tallest in the middle.
    void paintTowers(Distance distance, double base) {
        const double height = scene_.rect.height();
        const double middle = look_.isByTheSea ? (look_.isSeaLeft ? 0.72 : 0.28) : chance_.between(0.22, 0.78);
        const int count = 9 + static_cast<int>(14 * look_.size);
        std::vector<House> towers;
        for (int i = 0; i < count; ++i) {
            const double away = (chance_.part() + chance_.part() - 1) * 0.55;
            const double x = middle + away;
            const double peak = std::exp(-away * away / 0.045);
            const double tall = (0.16 + 0.36 * peak * chance_.between(0.55, 1)) * (0.55 + 0.45 * look_.size);
            const double width = height * chance_.between(0.045, 0.085);
            const double share = look_.densityAt(x);
            House tower;
            tower.walls = {scene_.rect.left() + x * scene_.rect.width(), groundAt(base) - tall * height * share, width,
                           tall * height * share};
            const std::array roofs{Roof::flat, Roof::steps, Roof::flat, Roof::crown, Roof::spire};
            tower.roof = roofs[static_cast<std::size_t>(chance_.below(tall > 0.36 ? 5 : 3))];
            tower.wall = towerWalls[static_cast<std::size_t>(chance_.below(4))];
            tower.top = tower.wall;
            tower.pane = 0.9;
            tower.seed = chance_.next();
            if (share > 0.3) towers.push_back(tower);
        }
        // The taller ones are behind.
        std::ranges::stable_sort(towers, {}, [](const House& house) { return house.walls.top(); });
        for (const auto& tower : towers) paintHouse(painter_, scene_, tower, distance);
        paintMist(painter_, scene_, distance);
    }

    /// What people know the place by.
    void paintChurch(Distance distance, double base, double size) {
        const double height = scene_.rect.height();
        double x = chance_.happens(0.5) ? chance_.between(0.14, 0.36) : chance_.between(0.64, 0.84);
        if (look_.isByTheSea) x = look_.isSeaLeft ? chance_.between(0.62, 0.86) : chance_.between(0.12, 0.36);
        const double left = scene_.rect.left() + x * scene_.rect.width();
        const bool hasDome = chance_.happens(0.35) && !look_.isVillage;
        const Tone wall = look_.hasWood ? Tone{232, 228, 216} : blend(wallOf(chance_), Tone{238, 228, 210}, 0.6);
        const Tone roof = roofOf(chance_);
        const double ground = groundAt(base);
        const double tower = height * size;
        const House nave{
            {left, ground - tower * 0.42, tower * 0.62, tower * 0.42}, Roof::along, wall, roof, 0, chance_.next()};
        House spire{
            {left - tower * 0.13, ground - tower * 0.72, tower * 0.2, tower * 0.72}, Roof::spire, wall,
            hasDome ? Tone{120, 160, 146} : blend(roof, {96, 96, 108}, 0.5),         0,           chance_.next()};
        if (hasDome) {
            spire.roof = Roof::dome;
            spire.walls.setWidth(tower * 0.3);
        }
        paintHouse(painter_, scene_, nave, distance);
        paintHouse(painter_, scene_, spire, distance);
    }

private:
    struct Plot {
        double x, width, tall;
    };

    double groundAt(double base) const { return scene_.rect.bottom() - base * scene_.rect.height(); }

    Tone wallOf(Chance& chance) const {
        const auto& walls = look_.hasWarmRoofs ? limeWalls : look_.hasWood ? woodWalls : brickWalls;
        const Tone tone = walls[static_cast<std::size_t>(chance.below(6))];
        return tone * static_cast<float>(chance.between(0.92, 1.04));
    }
    Tone roofOf(Chance& chance) const {
        const auto& roofs = look_.hasWarmRoofs ? clayRoofs : slateRoofs;
        return roofs[static_cast<std::size_t>(chance.below(3))] * static_cast<float>(chance.between(0.92, 1.06));
    }

    Roof kindOf(Chance& chance, double tall) const {
        // Where many live, roofs are flat; tall houses never have gables.
        const double pitched = tall > 0.3 ? 0 : 1 - 0.8 * look_.size;
        if (!chance.happens(pitched))
            return chance.happens(0.25) ? Roof::mansard : chance.happens(0.2) ? Roof::steps : Roof::flat;
        return chance.happens(0.45) ? Roof::gable : Roof::along;
    }

    void paintOne(const RowPlan& plan, const Plot& plot, std::uint64_t seed) {
        Chance chance{seed};
        const double height = scene_.rect.height();
        const double ground = groundAt(plan.base) + (look_.isVillage ? height * chance.between(-0.015, 0.02) : 0);
        House house;
        house.walls = {plot.x, ground - plot.tall * height, plot.width + 0.3 * scene_.unit, plot.tall * height};
        house.roof = kindOf(chance, plot.tall);
        house.wall = wallOf(chance);
        house.top = roofOf(chance);
        house.pane = plan.pane;
        house.seed = seed;
        paintHouse(painter_, scene_, house, plan.distance);
        // What lies lower than the feet of this row.
        if (plan.base > 0 && !look_.isVillage) {
            painter_.fillRect(
                QRectF{house.walls.left(), ground - 0.2, house.walls.width(), scene_.rect.bottom() - ground},
                plan.distance.seen(scene_, house.wall * 0.8F).colour());
        }
    }

    void paintTrees(const RowPlan& plan, double x, double width, double share, Chance chance) {
        if (share < 0.35) return; // none in the water
        const double size = scene_.rect.height() * (0.10 - 0.06 * plan.distance.far);
        for (double at = x; at < x + width; at += size * 0.7) {
            const bool isThere = chance.happens(plan.trees);
            const double tall = size * chance.between(0.7, 1.35);
            if (isThere)
                paintTree(painter_, scene_, {at, groundAt(plan.base) + scene_.unit}, tall, look_.hasConifers,
                          plan.distance, chance);
        }
    }

    QPainter& painter_;
    const ViewScene& scene_;
    const TownLook& look_;
    Chance chance_;
};

} // namespace

TownLook::TownLook(const SkyView& view) : isByTheSea(view.scenery.isByTheSea) {
    Chance chance{view.scenery.seed, ofCharacter};
    // Where it is not known how many there are, some tens of thousands.
    const double people = view.scenery.people > 0 ? view.scenery.people : 40'000;
    size = std::clamp((std::log10(people) - 3.3) / 3.4, 0.0, 1.0);
    isVillage = people < 5'000;
    hasTowers = people >= 700'000;
    const int north = std::abs(view.latitude);
    hasConifers = north >= 57 || (view.scenery.hills == 3 && north >= 35);
    isSeaLeft = chance.happens(0.5);
    hasWood = north >= 58 && size < 0.7;
    hasWarmRoofs = people < 2'000'000 && !hasWood && chance.happens(north < 46 ? 0.85 : 0.3);
}

double TownLook::densityAt(double x) const {
    if (!isByTheSea) return 1;
    return isSeaLeft ? rise(0.40, 0.78, x) : rise(0.60, 0.22, x);
}

void paintTown(QPainter& painter, const ViewScene& scene, const TownLook& look) {
    painter.setPen(Qt::NoPen);
    TownPainter town{painter, scene, look};
    const double size = look.size;
    const double trees = look.isVillage ? 0.8 : 0.5;
    if (look.hasTowers) town.paintTowers({0.72}, 0.20);
    if (!look.isVillage) {
        town.paintRow({{0.62}, 0.21, 0.05 + 0.02 * size, 0.11 + 0.15 * size, 0.05, 0.11, 0.1, 0.8, trees});
    }
    if (!look.hasTowers) town.paintChurch({0.45}, 0.15, look.isVillage ? 0.25 : 0.29 + 0.05 * size);
    town.paintRow(
        {{0.36}, 0.11, 0.05 + 0.04 * size, 0.10 + 0.20 * size, 0.07, 0.14, look.isVillage ? 0.6 : 0.12, 1.15, trees});
    const double near = look.isByTheSea ? 0.6 : 1;
    TownLook front = look;
    front.isByTheSea = false; // the roofs at the window go all the way
    TownPainter roofs{painter, scene, front};
    roofs.paintRow({{0.1},
                    -0.02,
                    (0.07 + 0.05 * size) * near,
                    (0.13 + 0.16 * size) * near,
                    0.11,
                    0.21,
                    look.isVillage ? 0.62 : 0.18,
                    1.7,
                    trees});
}

} // namespace lumaro
