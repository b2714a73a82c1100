// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/UI/Editor/CountdownChoices.h"
#include "Lumaro/UI/Editor/Grip.h"
#include "Lumaro/UI/Editor/PenView.h"
#include "Lumaro/UI/Editor/SelectedItem.h"

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <vector>

namespace lumaro {

/// A person's hands on the board, for views: what is selected and in the hand, and every verb of the editor. Places are
/// on the canvas. Refusals come as notices.
class EditorView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the application has it")
    Q_PROPERTY(lumaro::SelectedItem selected READ selected NOTIFY changed)
    Q_PROPERTY(lumaro::PenView* pen READ pen CONSTANT)
    Q_PROPERTY(QStringList members READ members NOTIFY changed)
    Q_PROPERTY(QString walkedTo READ walkedTo NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY changed)
    Q_PROPERTY(bool isWriting READ isWriting NOTIFY changed)
    Q_PROPERTY(bool isDoodling READ isDoodling NOTIFY changed)
    Q_PROPERTY(bool isNoteOffered READ isNoteOffered NOTIFY changed)
    Q_PROPERTY(bool isTakenAway READ isTakenAway NOTIFY changed)
    Q_PROPERTY(lumaro::CountdownChoices* countdown READ countdown CONSTANT)

public:
    /// Both outlive the view.
    EditorView(AppModel& app, WallClock& clock, QObject* parent = nullptr);

    const SelectedItem& selected() const { return selected_; }
    /// The ids of the group that is selected.
    QStringList members() const;
    /// Where the keys are while they gather a group.
    QString walkedTo() const;
    PenView* pen() { return &pen_; }
    bool canUndo() const { return editor_.canUndo(); }
    bool canRedo() const { return editor_.canRedo(); }
    bool isWriting() const { return hand_.isEditing(); }
    /// A note that was not finished when the program ended waits to be written on.
    bool isNoteOffered() const { return editor_.isNoteOffered(); }
    bool isDoodling() const { return pen_.isInHand(); }
    /// What was in the hand was taken down meanwhile, and can be put back.
    bool isTakenAway() const { return hand_.draft() && hand_.draft()->isGone(); }
    CountdownChoices* countdown() { return &countdown_; }
    EditorModel& model() { return editor_; }
    /// The selected one, as the hand shows it.
    std::optional<BoardItem> itemInSight() const;

    /// What changed, and what people are to be told.
    void hear(const AppNews& news);

    // Selecting.
    /// The item in front at that place; empty on the glass. `reach` is how far from ink still counts.
    Q_INVOKABLE QString itemAt(QPointF place, double reach) const;
    Q_INVOKABLE void select(const QString& itemId);
    Q_INVOKABLE void selectNothing();
    /// All that is not locked.
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE bool isSelected(const QString& itemId) const;
    /// Adds an item to what is selected, or takes it out.
    Q_INVOKABLE void toggle(const QString& itemId);
    /// The next item as people read; none at the end. While a group is gathered it stays, and only the keys go on.
    Q_INVOKABLE bool selectNext(bool isForward);
    /// Adds what the keys have come to, or takes it out.
    Q_INVOKABLE void toggleWalkedTo();
    /// A lasso from corner to corner: what is not locked and has its middle in it is selected, beside what was.
    Q_INVOKABLE void beginLasso(bool adds);
    Q_INVOKABLE void lasso(QPointF from, QPointF to);

    // What is selected in the hand, one item or several as one.
    Q_INVOKABLE void grip(QPointF at);
    Q_INVOKABLE void moveTo(QPointF pointer);
    Q_INVOKABLE void turnTo(QPointF pointer);
    Q_INVOKABLE void resizeTo(QPointF pointer);
    Q_INVOKABLE void letGo();

    // What is selected, by keys, wheel and menu. The first three are one act until `letGo`.
    Q_INVOKABLE void nudge(double dx, double dy);
    Q_INVOKABLE void turnBy(double degrees);
    Q_INVOKABLE void resizeBy(double factor);
    Q_INVOKABLE void bringToFront();
    Q_INVOKABLE void putToBack();
    Q_INVOKABLE void takeDown();
    Q_INVOKABLE void duplicate();
    Q_INVOKABLE void setKept(bool isKept);
    Q_INVOKABLE void setLocked(bool isLocked);
    /// A heart on the selected item.
    Q_INVOKABLE void giveHeart();

    // What the selected one holds.
    /// False, with a notice, when what is selected is locked.
    Q_INVOKABLE bool mayEdit();
    Q_INVOKABLE void startWriting();
    Q_INVOKABLE void finishWriting();
    Q_INVOKABLE void setPaper(const QString& paper);
    Q_INVOKABLE void setPin(const QString& pin);
    /// Whether a part of the note is not seen on its paper.
    Q_INVOKABLE bool isLongNote() const;
    /// The web addresses in the selected note, in order, none twice; and where one leads, to be read before it is
    /// opened.
    Q_INVOKABLE QStringList links() const;
    Q_INVOKABLE static QString placeOf(const QString& link);
    /// Opens a web address in whatever program the person has for them; nothing else is opened.
    Q_INVOKABLE static void openLink(const QString& link);
    Q_INVOKABLE void setCaption(const QString& caption);
    Q_INVOKABLE void setCountdown(const QString& label, double targetMs);
    Q_INVOKABLE void startBlock(int minutes);
    Q_INVOKABLE void joinBlock();
    Q_INVOKABLE void coolDown();
    Q_INVOKABLE void rest();

    // Putting up.
    /// Begins a note for a day, which goes up when it is let go of with something written on it; or goes on with the
    /// one that was not finished.
    Q_INVOKABLE void beginNote();
    /// A note of that text, which comes down after its day.
    Q_INVOKABLE bool putUpText(const QString& text);
    /// The same at a place of the canvas.
    Q_INVOKABLE bool putUpTextAt(const QString& text, QPointF place);
    /// What was jotted down and not put up, kept on this computer until it is.
    Q_INVOKABLE QString quickNote() const;
    Q_INVOKABLE void keepQuickNote(const QString& text);
    Q_INVOKABLE void putUpCountdown(const QString& label, double targetMs);
    Q_INVOKABLE void putUpCard(const QString& kind);
    Q_INVOKABLE void setBackground(const QString& background);

    /// Of the board, or of the pen while that is in the hand.
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    /// The window closes: writes, puts up and lets go of what is in the hand.
    void layDown();
    Q_INVOKABLE void putBack();
    /// Leaves what was taken away where it is.
    Q_INVOKABLE void letBe();

Q_SIGNALS:
    void changed();
    void noticed(const QString& text);

private:
    void refresh();
    const BoardItem* selectedOnBoard() const;
    /// Where what is selected lies in a gesture of keys or the wheel, which begins if none has; none when it cannot.
    std::optional<HeldPlace> inStepGesture();
    std::optional<HeldPlace> placeInSight() const;
    SelectedItem groupInSight() const;
    bool beginGesture();
    template <class Act>
    void inHand(Act act);
    void carryOut(const EditorModel::VerbOn& verbOn);
    void replacePayload(const BoardItem& item, Payload payload);
    template <class Value, class Change>
    void change(Change change);
    PartnerID me() const;

    AppModel& app_;
    EditorModel& editor_;
    ItemInHand& hand_;
    GroupInHand& group_;
    WallClock& clock_;
    CountdownChoices countdown_;
    PenView pen_;
    SelectedItem selected_;
    std::optional<Grip> grip_;
    bool isStepping_ = false;      ///< a gesture of keys or the wheel is under way
    std::optional<UUID> walkedTo_; ///< while keys gather a group
    std::vector<UUID> lassoed_;    ///< what was selected when the lasso began
};

} // namespace lumaro
