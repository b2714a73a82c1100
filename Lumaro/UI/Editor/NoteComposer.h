// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Editor/EditorView.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "Widgets/Items/Paper.h"

#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QTextCursor>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickTextDocument>

#include <optional>

namespace lumaro {

/// Stands between a field that people write in and the note in the editor's hand: fills the one from the other, and
/// gives back every change. The text's size follows what fits the note.
class NoteComposer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::EditorView* editor MEMBER editor_ NOTIFY setUp REQUIRED)
    Q_PROPERTY(QQuickTextDocument* document READ document WRITE setDocument NOTIFY setUp REQUIRED)
    Q_PROPERTY(int selectionStart MEMBER selectionStart_ NOTIFY formatChanged)
    Q_PROPERTY(int selectionEnd MEMBER selectionEnd_ NOTIFY formatChanged)
    Q_PROPERTY(QSizeF paper READ paper CONSTANT)
    Q_PROPERTY(QRectF box READ box CONSTANT)
    Q_PROPERTY(QFont font READ font NOTIFY fontChanged)
    Q_PROPERTY(QColor ink READ ink NOTIFY setUp)
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY setUp)
    Q_PROPERTY(bool isBold READ isBold NOTIFY formatChanged)
    Q_PROPERTY(bool isItalic READ isItalic NOTIFY formatChanged)
    Q_PROPERTY(bool isUnderlined READ isUnderlined NOTIFY formatChanged)
    Q_PROPERTY(bool isStruck READ isStruck NOTIFY formatChanged)
    Q_PROPERTY(QString color READ color NOTIFY formatChanged)

public:
    using QObject::QObject;

    QQuickTextDocument* document() const { return document_; }
    void setDocument(QQuickTextDocument* document);
    /// The size of a note, in points of the canvas, and where the text lies on it.
    static QSizeF paper() { return {BoardSpec::noteSize.width, BoardSpec::noteSize.height}; }
    static QRectF box();
    const QFont& font() const { return font_; }
    QColor ink() const { return paper_.ink; }
    /// Whether the note hangs in lamplight.
    bool isDark() const { return isDark_; }
    void setDark(bool isDark);
    bool isBold() const { return has(PMMark::Kind::bold); }
    bool isItalic() const { return has(PMMark::Kind::italic); }
    bool isUnderlined() const { return has(PMMark::Kind::underline); }
    bool isStruck() const { return has(PMMark::Kind::strike); }
    QString color() const;

    /// The note in the hand is to be written on.
    Q_INVOKABLE void begin();
    /// "bold", "italic", "underline" or "strike", for what is selected or is typed next.
    Q_INVOKABLE void toggle(const QString& mark);
    /// The note's paper changed: its inks are shown as they are on the new one. What was typed stays as it is.
    Q_INVOKABLE void takePaper();
    /// How an ink looks on the paper.
    Q_INVOKABLE QColor inkOf(const QString& stored) const;
    /// As the note stores it; empty for the paper's own ink.
    Q_INVOKABLE void setColor(const QString& color);

Q_SIGNALS:
    void setUp();
    void formatChanged();
    void fontChanged();

private:
    QTextCursor cursor() const;
    bool has(PMMark::Kind mark) const;
    std::optional<NotePayload> note() const;
    PaperColours coloursOf(const NotePayload& note) const;
    template <class Change>
    void format(Change change);
    void edited();
    void fit(const PMNode& text);

    EditorView* editor_ = nullptr;
    QQuickTextDocument* document_ = nullptr;
    int selectionStart_ = 0;
    int selectionEnd_ = 0;
    QFont font_;
    PaperColours paper_;
    bool isDark_ = false;
    PMNode original_;
    bool isFilling_ = true; ///< also until it begins
};

} // namespace lumaro
