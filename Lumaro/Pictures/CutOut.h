// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <cstdint>
#include <memory>
#include <span>

namespace lumaro {

class CutOutWork;

/// Cuts what a picture is of, or what people point at, out of it. They look at the edge that was guessed, scribble
/// where it is wrong, or draw a frame around what they mean instead. All places are in pixels of the picture.
///
/// A picture that is transparent in places is cut along them, and nothing that people point at changes that.
///
/// Pure: the same gestures cut the same edge. On a slow computer the first gesture takes a second and each further one
/// a quarter of that, so this is used on any one thread at a time that may wait. The first one of a process also loads
/// the module that does the work; where that is missing, all of a picture is kept, as if it had been cut before.
class CutOut {
public:
    enum class Scribble : std::uint8_t { keep, drop };

    /// Of a picture that is not null.
    explicit CutOut(QImage picture);
    CutOut(CutOut&&) noexcept;
    CutOut& operator=(CutOut&&) noexcept;
    ~CutOut();

    /// The picture was cut before it came here.
    bool isCutAlready() const;
    /// Looks for what the picture is of, before anybody points at anything; nothing is kept when nothing stands out.
    void guess();
    /// What is wanted lies wholly within; what was scribbled stays.
    void setFrame(const QRectF& frame);
    /// One stroke of a brush. Without a frame, what is wanted is looked for around what is scribbled.
    void scribble(std::span<const QPointF> points, double width, Scribble what);

    /// Takes back the latest frame or stroke, if there is one; the guess stays. How many can be taken back.
    void undo();
    int undoable() const;

    /// How much of each place is kept, from 0 to 255, in the picture's proportions and at most `workingSide` long.
    QImage mask() const;
    /// The edge around what is kept; empty when nothing is.
    QPainterPath outline() const;
    /// What is kept, trimmed, with a soft edge, its longest side at most `stickerSide`; null when nothing is.
    QImage sticker() const;

    static constexpr int workingSide = 400;
    static constexpr int stickerSide = 1024;
    /// Older ones than these stay: each holds about a megabyte.
    static constexpr int mostUndoable = 40;

private:
    std::unique_ptr<CutOutWork> work_;
};

} // namespace lumaro
