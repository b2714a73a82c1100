// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Pictures/CutOut.h"

namespace lumaro {

/// What `CutOut` does, as the module that is loaded for it has it: the library that knows pictures' colours is large,
/// and few starts of the program need it. The calls are those of `CutOut`.
class CutOutWork {
public:
    CutOutWork() = default;
    CutOutWork(const CutOutWork&) = delete;
    CutOutWork& operator=(const CutOutWork&) = delete;
    CutOutWork(CutOutWork&&) = delete;
    CutOutWork& operator=(CutOutWork&&) = delete;
    virtual ~CutOutWork() = default;

    [[nodiscard]] virtual bool isCutAlready() const = 0;
    virtual void guess() = 0;
    virtual void setFrame(const QRectF& frame) = 0;
    virtual void scribble(std::span<const QPointF> points, double width, CutOut::Scribble what) = 0;
    virtual void undo() = 0;
    [[nodiscard]] virtual int undoable() const = 0;
    [[nodiscard]] virtual QImage mask() const = 0;
    [[nodiscard]] virtual QPainterPath outline() const = 0;
    [[nodiscard]] virtual QImage sticker() const = 0;
};

/// The module's one function, by this name.
inline constexpr const char* makeCutOutWorkName = "lumaro_make_cut_out_work_1";
/// The caller owns what is returned.
using MakeCutOutWork = CutOutWork*(const QImage& picture);

} // namespace lumaro
