// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/Pictures/PictureImport.h"
#include "Lumaro/UI/Editor/CutOutSession.h"
#include "Lumaro/UI/Editor/LargeView.h"

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <deque>
#include <optional>

namespace lumaro {

/// What people copy; and what they paste, drop and choose becomes notes, photos and stickers. Pictures are made ready
/// in the background, one after the other, stored, and put up when they are on disk. Refusals come as notices.
class PictureExchange final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the application has it")
    Q_PROPERTY(lumaro::CutOutSession* cutOut READ cutOut CONSTANT)
    Q_PROPERTY(lumaro::LargeView* large READ large CONSTANT)

public:
    /// All outlive the exchange.
    PictureExchange(AppModel& app, UUIDSource& ids, BackgroundRunner& background, QObject* parent = nullptr);

    CutOutSession* cutOut() { return &cutOut_; }
    LargeView* large() { return &large_; }
    void hear(const AppChanges& changes) { large_.hear(changes); }

    /// Pictures that wait to be made ready, one under way among them: as many as a board holds items. More are refused.
    static constexpr std::size_t mostWaiting = BoardSpec::maxLiveItems;

    /// The selected note's text, photo or sticker, to the clipboard. A picture comes there when it is decoded, unless
    /// something else was copied by then.
    Q_INVOKABLE void copy();
    /// The clipboard: a picture, files, or a text. A picture is decoded in the background, unless the other program
    /// offers nothing but its pixels.
    Q_INVOKABLE bool paste();
    /// Files: the first one at a place of the canvas, the others in open spots, so that none hides another.
    Q_INVOKABLE void drop(const QList<QUrl>& urls, QPointF place);
    /// A picture as another program encoded it, at a place of the canvas.
    Q_INVOKABLE void dropPicture(const QByteArray& bytes, QPointF place);
    /// Of the formats that another program offers the encoded picture to take; empty when there is none that we read.
    Q_INVOKABLE static QString pictureFormat(const QStringList& offered);
    /// Asks for a file; a sticker is cut out of its picture.
    Q_INVOKABLE void choose(bool isSticker);
    void putUp(const QUrl& url, bool isSticker, std::optional<Point> place);

Q_SIGNALS:
    void noticed(const QString& text);

private:
    struct Wish {
        std::move_only_function<PictureImport()> import;
        bool isSticker = false;
        std::optional<Point> place;
    };

    void add(Wish wish);
    void next();
    void imported(PictureImport picture);
    void hang(ImportedPicture picture, bool isSticker, std::optional<Point> place);
    void cutNext();
    void copyPicture(const UUID& mediaId);

    AppModel& app_;
    UUIDSource& ids_;
    BackgroundRunner& background_;
    CutOutSession cutOut_;
    LargeView large_;
    std::deque<Wish> waiting_; ///< the first one is under way
    /// What waits until the picture before it is cut out or put away.
    struct Uncut {
        ImportedPicture picture;
        std::optional<Point> place;
    };
    std::deque<Uncut> uncut_;
    std::unique_ptr<BackgroundRunner::Task> task_;
    std::unique_ptr<BackgroundRunner::Task> copying_;
};

} // namespace lumaro
