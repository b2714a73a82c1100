// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Pictures/CutOut.h"
#include "LumaroCore/Support/BackgroundRunner.h"

#include <QtCore/QObject>
#include <QtGui/QImage>
#include <QtGui/QPainterPath>
#include <QtQml/qqmlregistration.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace lumaro {

/// A picture that is being cut out. The edge is guessed as soon as it is open; gestures are worked off in the
/// background one after the other, and the edge follows. Places are fractions of the picture, 0 to 1.
class CutOutSession final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the picture exchange has it")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(bool isWorking READ isWorking NOTIFY changed)
    Q_PROPERTY(bool hasEdge READ hasEdge NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(double aspect READ aspect NOTIFY changed)

public:
    /// The runner outlives the session.
    explicit CutOutSession(BackgroundRunner& background, QObject* parent = nullptr)
        : QObject(parent), background_(background) {}

    using Cut = std::move_only_function<void(QImage sticker)>;
    /// Opens a file's picture as soon as it is decoded; `then` gets what was cut out, when the person takes it. What is
    /// open or being opened goes.
    void open(std::string file, Cut then);

    bool isOpen() const { return cut_ != nullptr; }
    bool isWorking() const { return task_ != nullptr; }
    bool hasEdge() const { return !outline_.isEmpty(); }
    bool canUndo() const { return undoable_ > 0; }
    double aspect() const { return picture_.isNull() ? 1.0 : picture_.width() * 1.0 / picture_.height(); }
    const QImage& picture() const { return picture_; }
    /// In pixels of the picture.
    const QPainterPath& outline() const { return outline_; }

    Q_INVOKABLE void frame(double left, double top, double right, double bottom);
    /// `places` alternate x and y; `width` is a fraction of the picture's width.
    Q_INVOKABLE void scribble(const QList<double>& places, double width, bool isKept);
    /// Takes back the latest frame or stroke.
    Q_INVOKABLE void undo();
    /// Puts up what is within the edge, and closes.
    Q_INVOKABLE void take();
    Q_INVOKABLE void close();

Q_SIGNALS:
    void changed();
    void closed();

private:
    using Gesture = std::function<void(CutOut&)>;
    struct Opened;

    void add(Gesture gesture);
    void workOff();
    void letGo();

    BackgroundRunner& background_;
    QImage picture_;
    QPainterPath outline_;
    int undoable_ = 0;
    std::shared_ptr<CutOut> cut_; ///< the background's while a task is under way
    std::deque<Gesture> gestures_;
    std::unique_ptr<BackgroundRunner::Task> task_;
    Cut then_;
};

} // namespace lumaro
