// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/CutOut.h"

#include "Lumaro/Pictures/CutOutWork.h"
#include "Lumaro/Pictures/Module.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

/// Keeps all of the picture: what is left where the module is missing.
class WholePicture final : public CutOutWork {
public:
    explicit WholePicture(QImage picture) : picture_(std::move(picture)) {}

    [[nodiscard]] bool isCutAlready() const override { return true; }
    void guess() override {}
    void setFrame(const QRectF& /*frame*/) override {}
    void scribble(std::span<const QPointF> /*points*/, double /*width*/, CutOut::Scribble /*what*/) override {}
    void undo() override {}
    [[nodiscard]] int undoable() const override { return 0; }
    [[nodiscard]] QImage mask() const override {
        QImage all{fitted(CutOut::workingSide).size(), QImage::Format_Grayscale8};
        all.fill(Qt::white);
        return all;
    }
    [[nodiscard]] QPainterPath outline() const override {
        QPainterPath edge;
        edge.addRect(QRectF{picture_.rect()});
        return edge;
    }
    [[nodiscard]] QImage sticker() const override {
        return fitted(CutOut::stickerSide).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }

private:
    [[nodiscard]] QImage fitted(int side) const {
        if (std::max(picture_.width(), picture_.height()) <= side) return picture_;
        return picture_.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }

    QImage picture_;
};

std::unique_ptr<CutOutWork> workOn(QImage picture) {
    static auto* const make = reinterpret_cast<MakeCutOutWork*>(functionOfModule("lumaro-cutout", makeCutOutWorkName));
    if (make != nullptr) return std::unique_ptr<CutOutWork>{make(picture)};
    return std::make_unique<WholePicture>(std::move(picture));
}

} // namespace

CutOut::CutOut(QImage picture) : work_(workOn(std::move(picture))) {
}
CutOut::CutOut(CutOut&&) noexcept = default;
CutOut& CutOut::operator=(CutOut&&) noexcept = default;
CutOut::~CutOut() = default;

bool CutOut::isCutAlready() const {
    return work_->isCutAlready();
}

void CutOut::guess() {
    work_->guess();
}

void CutOut::setFrame(const QRectF& frame) {
    work_->setFrame(frame);
}

void CutOut::scribble(std::span<const QPointF> points, double width, Scribble what) {
    work_->scribble(points, width, what);
}

void CutOut::undo() {
    work_->undo();
}

int CutOut::undoable() const {
    return work_->undoable();
}

QImage CutOut::mask() const {
    return work_->mask();
}

QPainterPath CutOut::outline() const {
    return work_->outline();
}

QImage CutOut::sticker() const {
    return work_->sticker();
}

} // namespace lumaro
