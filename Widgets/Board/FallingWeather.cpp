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

namespace lumaro {
namespace {

constexpr std::size_t paneCount = 4;

/// The part of a picture that repeats itself, and the room around it that a pane needs to look anywhere.
class FallingNode : public QSGNode {
public:
    explicit FallingNode(QQuickWindow& window) {
        for (auto& pane : panes_) {
            pane = window.createImageNode();
            pane->setFlag(OwnedByParent);
            appendChildNode(pane);
        }
    }

    QSize period() const { return period_; }

    void setPicture(QQuickWindow& window, const QImage& tile, QSize pane) {
        period_ = tile.size();
        QImage picture{tile.size() + pane, QImage::Format_ARGB32_Premultiplied};
        picture.fill(Qt::transparent);
        QPainter painter{&picture};
        for (const int x : {0, tile.width()}) {
            for (const int y : {0, tile.height()}) painter.drawImage(x, y, tile);
        }
        painter.end();
        std::unique_ptr<QSGTexture> texture{
            window.createTextureFromImage(picture, QQuickWindow::TextureHasAlphaChannel)};
        for (auto* const node : panes_) node->setTexture(texture.get());
        texture_ = std::move(texture);
    }

    void show(std::size_t index, const QRectF& place, QPoint corner, double ratio) {
        panes_[index]->setRect(place);
        panes_[index]->setSourceRect({QPointF{corner}, place.size() * ratio});
    }

    void flash(QQuickWindow& window, const std::array<QRectF, paneCount>& places, const QColor& colour) {
        const bool isSeen = colour.alpha() > 0;
        for (std::size_t i = 0; i < paneCount; ++i) {
            auto*& light = lights_[i];
            if (isSeen && light == nullptr) {
                light = window.createRectangleNode();
                light->setFlag(OwnedByParent);
                appendChildNode(light);
            }
            if (!isSeen && light != nullptr) {
                removeChildNode(light);
                delete std::exchange(light, nullptr);
            }
            if (light == nullptr) continue;
            light->setRect(places[i]);
            light->setColor(colour);
        }
    }

private:
    std::array<QSGImageNode*, paneCount> panes_{};
    std::array<QSGRectangleNode*, paneCount> lights_{};
    std::unique_ptr<QSGTexture> texture_;
    QSize period_;
};

int wrapped(double value, int period) {
    const int rest = static_cast<int>(std::lround(std::fmod(value, period))) % period;
    return rest < 0 ? rest + period : rest;
}

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
    if (!isFalling() || !isVisible() || pointScale_ <= 0 || naturalSize_.isEmpty()) {
        delete node;
        isStale_ = true;
        return nullptr;
    }
    const double ratio = window()->effectiveDevicePixelRatio();
    auto panes = windowPanes(naturalSize_);
    for (auto& pane : panes) {
        // On whole pixels, so that nothing has to be sampled between them.
        const auto corner = (pane.topLeft() * pointScale_ * ratio).toPoint();
        const auto far = (pane.bottomRight() * pointScale_ * ratio).toPoint();
        pane = {QPointF{corner} / ratio, QPointF{far} / ratio};
    }
    const QSize tile = (QRectF{panes.front().topLeft(), panes.back().bottomRight()}.size() * ratio).toSize();
    if (tile.isEmpty()) {
        delete node;
        return nullptr;
    }
    if (node == nullptr) {
        node = new FallingNode{*window()};
        isStale_ = true;
    }
    if (std::exchange(isStale_, false)) {
        const QSize pane = (panes.front().size() * ratio).toSize() + QSize{2, 2};
        node->setPicture(*window(), paintedTile(*view(), tile, pointScale_ * ratio), pane);
    }
    for (std::size_t i = 0; i < panes.size(); ++i) {
        const QPointF offset = (panes[i].topLeft() - panes.front().topLeft()) * ratio - fallen_ * tile.height();
        node->show(i, panes[i], {wrapped(offset.x(), tile.width()), wrapped(offset.y(), tile.height())}, ratio);
    }
    node->flash(*window(), panes, QColor{236, 230, 255, static_cast<int>(flash_ * 92)});
    return node;
}

void FallingWeather::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemVisibleHasChanged) paintAnew();
}

} // namespace lumaro
