// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/PictureExchange.h"

#include "Lumaro/UI/Text.h"

#include <QtCore/QFile>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QFileDialog>

#include <utility>

namespace lumaro {
namespace {

/// No picture that people take is larger; what is, is no picture.
constexpr qint64 largestFile = qint64{256} * 1024 * 1024;
constexpr double step = 36; ///< points between pictures that are dropped together

std::expected<ImportedPicture, ImportFault> importFile(const QString& path) {
    QFile file{path};
    if (file.size() > largestFile) return std::unexpected(ImportFault::tooManyPixels);
    if (!file.open(QIODevice::ReadOnly)) return std::unexpected(ImportFault::notAPicture);
    const auto bytes = file.readAll();
    return importPicture({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

} // namespace

PictureExchange::PictureExchange(AppModel& app, UUIDSource& ids, BackgroundRunner& background, QObject* parent)
    : QObject(parent), app_(app), ids_(ids), background_(background), cutOut_(background) {
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] { copying_.reset(); });
}

void PictureExchange::copy() {
    const auto& id = app_.editor().selection();
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
    const auto path = app_.media().pathOf(mediaId);
    if (!path) return;
    copying_ = inBackground(
        background_, [path = qText(std::string_view{*path})] { return QImage{path}; },
        [this](const QImage& picture) {
            const auto done = std::move(copying_);
            if (!picture.isNull()) QGuiApplication::clipboard()->setImage(picture);
        });
}

bool PictureExchange::paste() {
    const auto* const data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr) return false;
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
    double away = 0;
    for (const auto& url : urls) {
        const bool isPlaced = !place.isNull();
        putUp(url, false, isPlaced ? std::optional{Point{place.x() + away, place.y() + away}} : std::nullopt);
        away += step;
    }
}

void PictureExchange::choose(bool isSticker) {
    auto* const dialog =
        new QFileDialog{nullptr,
                        isSticker ? QStringLiteral("a picture to cut out of") : QStringLiteral("a photo to put up"),
                        {},
                        QStringLiteral("pictures (*.jpg *.jpeg *.png *.webp *.gif *.bmp *.heic *.avif)")};
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(isSticker ? QFileDialog::ExistingFile : QFileDialog::ExistingFiles);
    // What is selected counts when it is accepted: not every dialog tells of both in one.
    connect(dialog, &QFileDialog::accepted, this, [this, dialog, isSticker] {
        for (const auto& url : dialog->selectedUrls()) putUp(url, isSticker, std::nullopt);
    });
    dialog->open();
}

void PictureExchange::putUp(const QUrl& url, bool isSticker, std::optional<Point> place) {
    if (!url.isLocalFile())
        return Q_EMIT noticed(QStringLiteral("save the picture first — only files can come up here"));
    add({.import = [path = url.toLocalFile()] { return importFile(path); }, .isSticker = isSticker, .place = place});
}

void PictureExchange::add(Wish wish) {
    waiting_.push_back(std::move(wish));
    if (waiting_.size() == 1) next();
}

void PictureExchange::next() {
    if (waiting_.empty()) return;
    task_ = inBackground(background_, std::move(waiting_.front().import),
                         [this](std::expected<ImportedPicture, ImportFault> picture) { imported(std::move(picture)); });
}

void PictureExchange::imported(std::expected<ImportedPicture, ImportFault> picture) {
    const auto done = std::move(task_);
    const auto wish = std::move(waiting_.front());
    waiting_.pop_front();
    if (!picture) {
        Q_EMIT noticed(qText(textOf(picture.error())));
    } else if (wish.isSticker && !picture->hasTransparency) {
        cut(std::move(*picture), wish.place);
    } else {
        const bool isSticker = wish.isSticker || picture->hasTransparency;
        hang(std::move(*picture), isSticker, wish.place);
    }
    next();
}

void PictureExchange::cut(ImportedPicture picture, std::optional<Point> place) {
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
                        if (!stored) return Q_EMIT noticed(qText(textOf(stored.error().fault)));
                        static_cast<void>(app_.editor().putUp(std::move(payload), place));
                    });
}

} // namespace lumaro
