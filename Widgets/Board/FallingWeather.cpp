// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/FallingWeather.h"

#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Items/Window/ViewPainting.h"

#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <QtQuick/QSGRectangleNode>

#include <array>
#include <cmath>
#include <memory>
#include <utility>

namespace lumaro {
namespace {

constexpr std::size_t paneCount = 4;

int wrapped(double value, int period) {
    const int rest = static_cast<int>(std::lround(std::fmod(value, period))) % period;
    return rest < 0 ? rest + period : rest;
}

/// The tile, and beyond its edges again as much of it as a pane shows.
QImage withRoom(const QImage& tile, QSize room) {
    QImage picture{tile.size() + room, QImage::Format_ARGB32_Premultiplied};
    picture.fill(Qt::transparent);
    QPainter painter{&picture};
    for (const int x : {0, tile.width()}) {
        for (const int y : {0, tile.height()}) painter.drawImage(x, y, tile);
    }
    return picture;
}

/// The panes, the light of a flash on them, and before them what stands in the room.
class FallingNode : public QSGNode {
public:
    explicit FallingNode(QQuickWindow& window) {
        for (auto& pane : panes_) appendChildNode(pane = imageNode(window));
        appendChildNode(plant_ = imageNode(window));
        plant_->setOwnsTexture(true);
    }

    void paint(QQuickWindow& window, const SkyView& view, QSizeF size, double density) {
        const double ratio = window.effectiveDevicePixelRatio();
        const auto onPixels = [&](const QRectF& rect) {
            // So that nothing has to be sampled between them.
            return QRect{(rect.topLeft() * density).toPoint(), (rect.size() * density).toSize().expandedTo({1, 1})};
        };
        const auto inView = [&](const QRect& pixels) {
            return QRectF{QPointF{pixels.topLeft()} / ratio, QSizeF{pixels.size()} / ratio};
        };
        const auto panes = windowPanes(size);
        for (std::size_t i = 0; i < paneCount; ++i) {
            pixels_[i] = onPixels(panes[i]);
            panes_[i]->setRect(inView(pixels_[i]));
        }
        period_ = onPixels(panes.front().united(panes.back())).size();
        const auto picture = withRoom(paintedTile(view, period_, density), pixels_.front().size() + QSize{2, 2});
        std::unique_ptr<QSGTexture> texture{
            window.createTextureFromImage(picture, QQuickWindow::TextureHasAlphaChannel)};
        for (auto* const pane : panes_) pane->setTexture(texture.get());
        texture_ = std::move(texture);
        paintPlant(window, size, density, onPixels(windowPlantRect(size)), inView);
    }

    void move(QPointF fallen) {
        for (std::size_t i = 0; i < paneCount; ++i) {
            const QPointF corner =
                QPointF{pixels_[i].topLeft() - pixels_.front().topLeft()} - fallen * period_.height();
            panes_[i]->setSourceRect(
                {QPointF(wrapped(corner.x(), period_.width()), wrapped(corner.y(), period_.height())),
                 QSizeF{pixels_[i].size()}});
        }
    }

    void flash(QQuickWindow& window, const QColor& colour) {
        const bool isSeen = colour.alpha() > 0;
        for (std::size_t i = 0; i < paneCount; ++i) {
            auto*& light = lights_[i];
            if (isSeen && light == nullptr) {
                light = window.createRectangleNode();
                light->setFlag(OwnedByParent);
                insertChildNodeBefore(light, plant_);
            }
            if (!isSeen && light != nullptr) {
                removeChildNode(light);
                delete std::exchange(light, nullptr);
            }
            if (light == nullptr) continue;
            light->setRect(panes_[i]->rect());
            light->setColor(colour);
        }
    }

private:
    static QSGImageNode* imageNode(QQuickWindow& window) {
        auto* const node = window.createImageNode();
        node->setFlag(OwnedByParent);
        return node;
    }

    template <class InView>
    void paintPlant(QQuickWindow& window, QSizeF size, double density, const QRect& place, InView inView) {
        QImage picture{place.size(), QImage::Format_ARGB32_Premultiplied};
        picture.fill(Qt::transparent);
        QPainter painter{&picture};
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-place.topLeft());
        painter.scale(density, density);
        paintWindowPlant(painter, size);
        painter.end();
        plant_->setTexture(window.createTextureFromImage(picture, QQuickWindow::TextureHasAlphaChannel));
        plant_->setRect(inView(place));
        plant_->setSourceRect({{0, 0}, QSizeF{place.size()}});
    }

    std::array<QSGImageNode*, paneCount> panes_{};
    std::array<QSGRectangleNode*, paneCount> lights_{};
    QSGImageNode* plant_ = nullptr;
    std::array<QRect, paneCount> pixels_{}; ///< of the panes
    QSize period_;                          ///< of the tile
    std::unique_ptr<QSGTexture> texture_;   ///< which all panes show
};

} // namespace

FallingWeather::FallingWeather(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

const SkyView* FallingWeather::view() const {
    const auto* const card = face_.as<WindowFace>();
    return card != nullptr && card->view ? &*card->view : nullptr;
}

bool FallingWeather::isFalling() const {
    return view() != nullptr && falls(*view());
}

bool FallingWeather::isStormy() const {
    return view() != nullptr && view()->sky == Sky::storm;
}

void FallingWeather::paintAnew() {
    isStale_ = true;
    update();
    Q_EMIT changed();
}

void FallingWeather::setFace(const ItemFace& face) {
    if (face_ == face) return;
    face_ = face;
    paintAnew();
}

void FallingWeather::setNaturalSize(QSizeF size) {
    if (naturalSize_ == size) return;
    naturalSize_ = size;
    paintAnew();
}

void FallingWeather::setPointScale(double scale) {
    if (pointScale_ == scale) return;
    pointScale_ = scale;
    paintAnew();
}

void FallingWeather::setFlash(double flash) {
    if (flash_ == flash) return;
    flash_ = flash;
    update();
    Q_EMIT flashChanged();
}

void FallingWeather::advance(double seconds) {
    if (!isFalling()) return;
    const auto way = fallingTile(*view());
    fallen_ = {std::fmod(fallen_.x() + way.dx * seconds, 1'000), std::fmod(fallen_.y() + way.dy * seconds, 1'000)};
    update();
}

QSGNode* FallingWeather::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    auto* node = static_cast<FallingNode*>(old);
    const double density = pointScale_ * window()->effectiveDevicePixelRatio();
    if (!isFalling() || !isVisible() || density <= 0 || naturalSize_.isEmpty()) {
        delete node;
        return nullptr;
    }
    if (node == nullptr) {
        node = new FallingNode{*window()};
        isStale_ = true;
    }
    if (std::exchange(isStale_, false)) node->paint(*window(), *view(), naturalSize_, density);
    node->move(fallen_);
    node->flash(*window(), QColor{236, 230, 255, static_cast<int>(flash_ * 92)});
    return node;
}

void FallingWeather::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemVisibleHasChanged) paintAnew();
}

} // namespace lumaro
