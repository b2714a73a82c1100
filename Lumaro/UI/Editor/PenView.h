// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace lumaro {

/// Pen and eraser, for views. Places are on the canvas. Refusals come as notices of the editor.
class PenView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the editor has it")
    Q_PROPERTY(bool isInHand READ isInHand NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY changed)
    Q_PROPERTY(bool isChanged READ isChanged NOTIFY changed)

public:
    /// The application outlives the view.
    explicit PenView(AppModel& app, QObject* parent = nullptr);

    const std::optional<DoodleSession>& session() const { return pen_.session(); }
    bool isInHand() const { return session().has_value(); }
    bool canUndo() const { return session() && session()->canUndo(); }
    bool canRedo() const { return session() && session()->canRedo(); }
    /// There is ink that would be lost, or was rubbed out.
    bool isChanged() const { return session() && session()->isChanged(); }

    /// New ink on that item, the doodle that it is, or new ink on the glass.
    Q_INVOKABLE void begin(const QString& onItem);
    /// The ink and width of the lines that follow.
    Q_INVOKABLE void take(const QString& ink, double width);
    /// As `PenArea` tells them.
    Q_INVOKABLE void down(QPointF place, double seconds, double pressure);
    Q_INVOKABLE void moveTo(QPointF place, double seconds, double pressure);
    Q_INVOKABLE void up();
    Q_INVOKABLE void erase(QPointF from, QPointF to, double radius);
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    /// Puts the ink up.
    Q_INVOKABLE void finish();
    /// Throws the ink away.
    Q_INVOKABLE void letGo();

    /// The editor's news.
    void refresh() { Q_EMIT changed(); }

Q_SIGNALS:
    /// Pen or eraser changed what is being drawn, or came into the hand or out of it.
    void changed();

private:
    AppModel& app_;
    PenInHand& pen_;
    DoodleSession::Pen taken_{"ink", 6};
};

} // namespace lumaro
