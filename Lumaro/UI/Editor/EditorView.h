// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/UI/Editor/Grip.h"
#include "Lumaro/UI/Editor/SelectedItem.h"

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace lumaro {

/// A person's hands on the board, for views: what is selected and in the hand, and every verb of the editor. Places are
/// on the canvas. Refusals come as notices.
class EditorView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the application has it")
    Q_PROPERTY(lumaro::SelectedItem selected READ selected NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY changed)
    Q_PROPERTY(bool isWriting READ isWriting NOTIFY changed)
    Q_PROPERTY(bool isDoodling READ isDoodling NOTIFY changed)
    Q_PROPERTY(bool isTakenAway READ isTakenAway NOTIFY changed)

public:
    /// Both outlive the view.
    EditorView(AppModel& app, WallClock& clock, QObject* parent = nullptr);

    const SelectedItem& selected() const { return selected_; }
    bool canUndo() const { return editor_.canUndo(); }
    bool canRedo() const { return editor_.canRedo(); }
    bool isWriting() const { return hand_.isEditing(); }
    bool isDoodling() const { return pen_.session().has_value(); }
    /// What was in the hand was taken down meanwhile, and can be put back.
    bool isTakenAway() const { return hand_.draft() && hand_.draft()->isGone(); }
    EditorModel& model() { return editor_; }

    /// What changed, and what people are to be told.
    void hear(const AppNews& news);

    // Selecting.
    /// The item in front at that place; empty on the glass. `reach` is how far from ink still counts.
    Q_INVOKABLE QString itemAt(QPointF place, double reach) const;
    Q_INVOKABLE void select(const QString& itemId);
    Q_INVOKABLE void selectNothing();
    /// The next item as people read; none at the end.
    Q_INVOKABLE bool selectNext(bool isForward);

    // The selected one in the hand.
    Q_INVOKABLE void grip(QPointF at);
    Q_INVOKABLE void moveTo(QPointF pointer);
    Q_INVOKABLE void turnTo(QPointF pointer);
    Q_INVOKABLE void resizeTo(QPointF pointer);
    Q_INVOKABLE void letGo();

    // The selected one by keys, wheel and menu. The first three are one act until `letGo`.
    Q_INVOKABLE void nudge(double dx, double dy);
    Q_INVOKABLE void turnBy(double degrees);
    Q_INVOKABLE void resizeBy(double factor);
    Q_INVOKABLE void bringToFront();
    Q_INVOKABLE void takeDown();
    Q_INVOKABLE void duplicate();
    Q_INVOKABLE void setKept(bool isKept);

    // What the selected one holds.
    Q_INVOKABLE void startWriting();
    Q_INVOKABLE void finishWriting();
    Q_INVOKABLE void setPaper(const QString& paper);
    Q_INVOKABLE void setCaption(const QString& caption);
    Q_INVOKABLE void setCountdown(const QString& label, double targetMs);
    Q_INVOKABLE void startBlock(int minutes);
    Q_INVOKABLE void joinBlock();
    Q_INVOKABLE void coolDown();
    Q_INVOKABLE void rest();

    // Putting up.
    Q_INVOKABLE void putUpNote(const QString& paper);
    /// A note of that text, which comes down after its day.
    Q_INVOKABLE bool putUpText(const QString& text);
    /// The same at a place of the canvas.
    Q_INVOKABLE bool putUpTextAt(const QString& text, QPointF place);
    Q_INVOKABLE void putUpCountdown(const QString& label, double targetMs);
    Q_INVOKABLE void putUpCard(const QString& kind);
    Q_INVOKABLE void setBackground(const QString& background);

    // Pen and eraser.
    Q_INVOKABLE void beginDoodle(const QString& onItem);
    Q_INVOKABLE void penDown(QPointF place, const QString& ink, double width);
    Q_INVOKABLE void penTo(QPointF place);
    Q_INVOKABLE void penUp();
    Q_INVOKABLE void erase(QPointF from, QPointF to, double radius);
    Q_INVOKABLE void finishDoodle();
    Q_INVOKABLE void cancelDoodle();

    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    Q_INVOKABLE void putBack();
    /// Leaves what was taken away where it is.
    Q_INVOKABLE void letBe();

    /// A moment in this device's time from what people type, "2026-12-24 18:00" or the day alone; NaN when it is none.
    Q_INVOKABLE static double momentFrom(const QString& day, const QString& time);
    Q_INVOKABLE static QString dayOf(double ms);
    Q_INVOKABLE static QString timeOf(double ms);
    Q_INVOKABLE static double inDays(int days);

Q_SIGNALS:
    void changed();
    /// Ink or eraser changed what is being drawn.
    void inkChanged();
    void noticed(const QString& text);

private:
    void refresh();
    const BoardItem* selectedOnBoard() const;
    /// The selected item in a gesture of keys or the wheel, which begins if none has; null when it cannot.
    std::optional<BoardItem> inStepGesture();
    std::optional<BoardItem> itemInSight() const;
    void replacePayload(const BoardItem& item, Payload payload);
    template <class Value, class Change>
    void change(Change change);
    PartnerID me() const;

    AppModel& app_;
    EditorModel& editor_;
    ItemInHand& hand_;
    PenInHand& pen_;
    WallClock& clock_;
    SelectedItem selected_;
    std::optional<Grip> grip_;
    bool isStepping_ = false; ///< a gesture of keys or the wheel is under way
};

} // namespace lumaro
