// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/Chance.h"
#include "Widgets/Items/Window/Noise.h"
#include "Widgets/Items/Window/ViewScene.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace lumaro {
namespace {

constexpr std::uint64_t ofClouds = 23;

/// A colour over what lies behind it.
struct Veil {
    Tone tone; ///< times opacity
    float opacity = 0;

    void coverWith(Tone colour, float amount) {
        tone = tone * (1 - amount) + colour * amount;
        opacity = opacity * (1 - amount) + amount;
    }
};

float clamped(float value) {
    return std::clamp(value, 0.0F, 1.0F);
}
float smooth(float from, float to, float value) {
    const float t = clamped((value - from) / (to - from));
    return t * t * (3 - 2 * t);
}

/// What every pixel of the clouds shares. Places are heights of the view.
class CloudPainter {
public:
    explicit CloudPainter(const ViewScene& scene)
        : light_(scene.light), cover_(scene.view.clouds),
          sun_((scene.sun - scene.rect.topLeft()) / scene.rect.height()), sunHeight_(scene.view.sunAltitude),
          sunReach_(static_cast<float>(rise(-8, 2, sunHeight_) * scene.light.direct *
                                       (0.35 + 0.65 * rise(150, 110, std::abs(scene.sunTurn))))),
          evening_(static_cast<float>(rise(12, 3, sunHeight_))), dark_(static_cast<float>(rise(0, -9, sunHeight_))),
          clear_(static_cast<float>(1 - rise(0.35, 0.9, scene.view.mist))),
          isHeavy_(scene.view.sky == Sky::rain || scene.view.sky == Sky::storm || scene.view.sky == Sky::snow) {
        Chance chance{scene.view.scenery.seed, ofClouds};
        // They drift with the wind from midnight to midnight, over every place other ones.
        const double drift = scene.view.hour * (0.05 + scene.view.windKmh * 0.012) * (scene.slant(20) < 0 ? 1 : -1);
        offset_ = static_cast<float>(chance.between(0, 40) + drift);
        far_ = static_cast<float>(chance.between(0, 40));
    }

    /// At a place, `elevation` over the horizon.
    Veil at(float x, float y, float elevation) const {
        Veil veil;
        const float dx = static_cast<float>(sun_.x()) - x;
        const float dy = static_cast<float>(sun_.y()) - y;
        const float distance = std::sqrt(dx * dx + dy * dy) + 0.05F;
        const Ray ray{dx / distance, dy / distance, std::exp(-distance * 2.6F) * sunReach_};
        if (cover_.high > 0.02) addHigh(veil, x, elevation, ray);
        if (cover_.middle > 0.02) addMiddle(veil, x, elevation, ray);
        if (cover_.low > 0.02) addLow(veil, x, elevation, ray);
        return {veil.tone * clear_, veil.opacity * clear_};
    }

private:
    struct Ray {
        float x, y;  ///< towards the sun
        float shine; ///< how close it is, 0 to 1
    };

    Tone hazy(Tone tone, float elevation, float amount) const {
        return blend(tone, light_.haze, amount * std::exp(-elevation * 7));
    }

    void addHigh(Veil& veil, float x, float elevation, Ray ray) const {
        // Ice in thin threads that the wind has combed.
        const float depth = 1 / (elevation + 0.34F);
        const float u = (x - 0.7F) * depth * 0.9F + offset_ * 0.4F;
        const float v = depth * 2.6F + far_;
        const float warp = cloudiness<2>(u * 0.9F, v * 0.9F);
        const float threads = cloudiness<4>(u * 0.9F + 0.6F * warp + 0.35F * v, v * 3.4F + 2.4F * warp);
        const float patches = cloudiness<2>(u * 0.6F + 9, v * 0.5F);
        const auto cover = static_cast<float>(cover_.high);
        const float there = smooth(0.66F - 0.40F * cover, 0.96F - 0.36F * cover, threads * 0.62F + patches * 0.46F);
        const float amount = there * (0.34F + 0.26F * cover) * smooth(0, 0.12F, elevation);
        veil.coverWith(hazy(blend(light_.cirrus, light_.sun, 0.4 * ray.shine), elevation, 0.5F), amount);
    }

    void addMiddle(Veil& veil, float x, float elevation, Ray ray) const {
        const float depth = 1 / (elevation + 0.22F);
        const float u = (x - 0.7F) * depth * 1.5F + offset_ * 0.8F;
        const float v = depth * 3.1F + far_ + 20;
        const auto cover = static_cast<float>(cover_.middle);
        const float fields = cloudiness<2>(u * 0.42F, v * 0.5F);
        const float cells = cloudiness<3>(u * 1.7F + 0.4F * fields, v * 1.5F);
        const float shape = fields * 0.55F + cells * 0.45F;
        const float from = 0.70F - 0.52F * cover;
        const float body = smooth(from, from + 0.16F, shape);
        if (body <= 0) return;
        const float thick = smooth(from + 0.05F, from + 0.34F, shape);
        // They see the sun longer than the low ones.
        Tone tone =
            blend(blend(light_.cloudLit, light_.cirrus, 0.45 * evening_), light_.cloudShade, 0.18 + 0.62 * thick);
        tone = blend(tone, light_.sun, 0.55 * ray.shine * (1 - thick));
        veil.coverWith(hazy(tone, elevation, 0.55F), body * (0.50F + 0.40F * cover) * smooth(-0.02F, 0.1F, elevation));
    }

    /// Heaps of cloud while they are few, a ceiling when they close.
    static float lowShape(float u, float v) {
        const float heaps = cloudiness<2>(u, v * 1.5F);
        // Round heads with sharp folds between them.
        const float heads = std::abs(2 * noiseAt(u * 2.6F + 7, v * 3.3F) - 1) * 0.62F +
                            std::abs(2 * cloudiness<2>(u * 6.1F + 3, v * 7.3F) - 1) * 0.5F;
        return heaps * 0.74F + heads * 0.30F;
    }

    void addLow(Veil& veil, float x, float elevation, Ray ray) const {
        const float size = 0.30F + 0.44F * elevation; // farther ones are smaller
        const float u = (x - 0.7F) / size * 0.78F + offset_;
        const float v = -elevation / size * 0.95F + far_ + 4;
        const auto cover = static_cast<float>(cover_.low);
        const float shape = lowShape(u, v);
        const float from = 0.64F - 0.62F * cover;
        const float body = smooth(from, from + 0.085F, shape);
        if (body <= 0) return;
        // What lies between a place and the light takes it away.
        const float step = 0.15F;
        const float rayY = sunHeight_ > 12 ? -1 : ray.y; // high light comes from above everywhere
        const float rayX = sunHeight_ > 12 ? ray.x * 0.4F : ray.x;
        const float towards = lowShape(u + rayX * step, v + rayY * step);
        const float thick = smooth(from + 0.06F, from + 0.46F, shape);
        const float closed = smooth(0.66F, 0.95F, cover);
        const float lit = clamped(0.5F + (2.3F - 1.5F * closed) * (shape - towards));
        // Low light leaves the hearts of the clouds dark.
        const float floor = 0.30F - 0.24F * evening_;
        const float open = (floor + 0.85F * lit) * (1 - (0.35F + 0.35F * evening_) * thick);
        const float ceiling =
            0.10F + 0.9F * smooth(0.22F, 0.66F, 1 - shape) * (0.45F + 0.55F * lit) + 0.28F * (1 - elevation);
        const float bright = open * (1 - closed) + ceiling * closed * (isHeavy_ ? 0.62F + 0.5F * dark_ : 0.85F);
        Tone tone = blend(light_.cloudShade, light_.cloudLit, clamped(bright));
        tone = blend(tone, light_.sun, 0.75 * ray.shine * (1 - thick) * (1 - closed));
        veil.coverWith(hazy(tone, elevation, 0.62F),
                       body * (0.90F + 0.1F * closed) *
                           smooth(-0.06F, 0.05F + 0.04F * closed, elevation + 0.04F * closed));
    }

    const SkyLight& light_;
    SkyView::Clouds cover_;
    QPointF sun_;
    double sunHeight_;
    float sunReach_; ///< how much of the sun's light shines into them
    float evening_;  ///< 1 with the sun low
    float dark_;     ///< 1 at night
    float clear_;    ///< what the mist leaves of them
    bool isHeavy_;
    float offset_ = 0;
    float far_ = 0;
};

} // namespace

void paintClouds(QPainter& painter, const ViewScene& scene) {
    const auto& cover = scene.view.clouds;
    if (cover.low <= 0.02 && cover.middle <= 0.02 && cover.high <= 0.02) return;
    const CloudPainter clouds{scene};
    const double height = scene.horizon - scene.rect.top();
    // They are soft: more pixels than this would not be seen.
    const double density = std::min(std::max(1.0, scene.density / 1.6), 150 / scene.rect.height());
    const QSize size = (QSizeF{scene.rect.width(), height} * density).toSize().expandedTo({2, 2});
    QImage image{size, QImage::Format_ARGB32_Premultiplied};
    const double toHeights = 1 / (density * scene.rect.height());
    for (int row = 0; row < size.height(); ++row) {
        const auto y = static_cast<float>((row + 0.5) * toHeights);
        const auto elevation = static_cast<float>(1 - (row + 0.5) / size.height());
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(row));
        for (int column = 0; column < size.width(); ++column) {
            const auto veil = clouds.at(static_cast<float>((column + 0.5) * toHeights), y, elevation);
            const auto part = [&](float value) {
                return static_cast<unsigned>(std::clamp(value + 0.5F, 0.0F, 255 * veil.opacity));
            };
            line[column] = static_cast<unsigned>(255 * veil.opacity) << 24U | part(veil.tone.r) << 16U |
                           part(veil.tone.g) << 8U | part(veil.tone.b);
        }
    }
    painter.drawImage(QRectF{scene.rect.topLeft(), QSizeF{scene.rect.width(), height}}, image);
}

} // namespace lumaro
