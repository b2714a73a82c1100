// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/PictureExchange.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/StoredPicture.h"
#include "Lumaro/UI/Text.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QFileDialog>

#include <array>
#include <utility>

namespace lumaro {
namespace {

/// Those that are most likely without loss come first.
constexpr std::array pictureFormats{"image/png",  "image/webp", "image/jpeg", "image/avif",
                                    "image/heic", "image/tiff", "image/gif",  "image/bmp"};
constexpr int longestCopiedSide = 4096;

PictureImport importBytes(const QByteArray& bytes) {
    return importPicture({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

QString textFor(const ImportRefusal& refusal) {
    const auto text = Words::of(textOf(refusal.fault));
    return refusal.detail.empty() ? text : text.arg(qText(std::string_view{refusal.detail}));
}

} // namespace

PictureExchange::PictureExchange(AppModel& app, UUIDSource& ids, BackgroundRunner& background, QObject* parent)
    : QObject(parent), app_(app), ids_(ids), background_(background), cutOut_(background), large_(app, background) {
    allowLargePictures();
    connect(&large_, &LargeView::noticed, this, &PictureExchange::noticed);
    connect(&cutOut_, &CutOutSession::closed, this, &PictureExchange::cutNext);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] { copying_.reset(); });
}

void PictureExchange::copy() {
    const auto& id = app_.editor().inHand().selection();
    const auto* const item = id ? app_.board().find(*id) : nullptr;
    if (item == nullptr) return;
    if (const auto* const note = item->payload.as<NotePayload>()) {
        QGuiApplication::clipboard()->setText(qText(std::string_view{note->pm.plainText()}));
    } else if (const auto* const photo = item->payload.as<PhotoPayload>()) {
        copyPicture(photo->mediaId);
    } else if (const auto* const sticker = item->payload.as<StickerPayload>()) {
        copyPicture(sticker->mediaId);
    }
}

void PictureExchange::copyPicture(const UUID& mediaId) {
    if (!app_.media().has(mediaId)) return Q_EMIT noticed(Words::tr("the picture is still on its way."));
    copying_ = inBackground(
        background_,
        [&cache = app_.media(), mediaId] {
            const auto bytes = cache.read(mediaId);
            return bytes ? readStored(*bytes, longestCopiedSide) : QImage{};
        },
        [this](const QImage& picture) {
            const auto done = std::move(copying_);
            if (picture.isNull()) return Q_EMIT noticed(Words::tr("that picture couldn't be copied."));
            QGuiApplication::clipboard()->setImage(picture);
        });
}

bool PictureExchange::paste() {
    const auto* const data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr) return false;
    if (const auto format = pictureFormat(data->formats()); !format.isEmpty()) {
        add({.import = [bytes = data->data(format)] { return importBytes(bytes); }, .isSticker = false, .place = {}});
        return true;
    }
    if (data->hasImage()) {
        add({.import = [image = data->imageData().value<QImage>()] { return importPicture(image); },
             .isSticker = false,
             .place = {}});
        return true;
    }
    if (data->hasUrls() && data->urls().front().isLocalFile()) {
        drop(data->urls(), {});
        return true;
    }
    return data->hasText() && app_.editor().pasteText(data->text().toStdString()).has_value();
}

void PictureExchange::drop(const QList<QUrl>& urls, QPointF place) {
    auto where = place.isNull() ? std::nullopt : std::optional{Point{place.x(), place.y()}};
    for (const auto& url : urls) putUp(url, false, std::exchange(where, std::nullopt));
}

void PictureExchange::dropPicture(const QByteArray& bytes, QPointF place) {
    add({.import = [bytes] { return importBytes(bytes); }, .isSticker = false, .place = Point{place.x(), place.y()}});
}

QString PictureExchange::pictureFormat(const QStringList& offered) {
    for (const auto* const format : pictureFormats) {
        if (offered.contains(QLatin1String{format})) return QLatin1String{format};
    }
    return {};
}

void PictureExchange::choose(bool isSticker) {
    auto* const dialog = new QFileDialog{
        nullptr,
        isSticker ? Words::tr("a picture to cut out of") : Words::tr("a photo to put up"),
        {},
        Words::tr("pictures") +
            QStringLiteral(" (*.jpg *.jpeg *.png *.webp *.gif *.bmp *.tif *.tiff *.heic *.heif *.avif)")};
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(isSticker ? QFileDialog::ExistingFile : QFileDialog::ExistingFiles);
    // The selection is read when the dialog is accepted: not every desktop's dialog signals `filesSelected`.
    connect(dialog, &QFileDialog::accepted, this, [this, dialog, isSticker] {
        for (const auto& url : dialog->selectedUrls()) putUp(url, isSticker, std::nullopt);
    });
    dialog->open();
}

void PictureExchange::putUp(const QUrl& url, bool isSticker, std::optional<Point> place) {
    if (!url.isLocalFile()) return Q_EMIT noticed(Words::tr("save the picture first — only files can come up here"));
    add({.import = [path = url.toLocalFile().toStdString()] { return importPictureFile(path); },
         .isSticker = isSticker,
         .place = place});
}

void PictureExchange::add(Wish wish) {
    if (waiting_.size() + uncut_.size() >= mostWaiting) {
        return Q_EMIT noticed(Words::tr("that's more pictures than the board can take at once."));
    }
    waiting_.push_back(std::move(wish));
    if (waiting_.size() == 1) next();
}

void PictureExchange::next() {
    if (waiting_.empty()) return;
    task_ = inBackground(background_, std::move(waiting_.front().import),
                         [this](PictureImport picture) { imported(std::move(picture)); });
}

void PictureExchange::imported(PictureImport picture) {
    const auto done = std::move(task_);
    const auto wish = std::move(waiting_.front());
    waiting_.pop_front();
    if (!picture) {
        Q_EMIT noticed(textFor(picture.error()));
    } else if (wish.isSticker && !picture->hasTransparency) {
        uncut_.push_back({std::move(*picture), wish.place});
        cutNext();
    } else {
        const bool isSticker = wish.isSticker || picture->hasTransparency;
        hang(std::move(*picture), isSticker, wish.place);
    }
    next();
}

void PictureExchange::cutNext() {
    if (uncut_.empty() || cutOut_.isOpen() || cutOut_.isWorking()) return;
    auto [picture, place] = std::move(uncut_.front());
    uncut_.pop_front();
    cutOut_.open(std::move(picture.bytes), [this, place](QImage sticker) {
        add({.import = [sticker = std::move(sticker)] { return importPicture(sticker); },
             .isSticker = true,
             .place = place});
    });
}

void PictureExchange::hang(ImportedPicture picture, bool isSticker, std::optional<Point> place) {
    const auto id = ids_.next();
    Payload payload =
        isSticker ? Payload{StickerPayload{id, picture.aspect}} : Payload{PhotoPayload{id, {}, {}, picture.aspect}};
    app_.storeMedia(id, std::move(picture.bytes),
                    [this, payload = std::move(payload), place](std::expected<void, MediaError> stored) mutable {
                        if (!stored) return Q_EMIT noticed(Words::of(textOf(stored.error().fault)));
                        static_cast<void>(app_.editor().putUp(std::move(payload), place));
                    });
}

} // namespace lumaro
