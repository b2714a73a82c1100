// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/LargeView.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/StoredPicture.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Geometry/ItemAt.h"
#include "LumaroCore/Protocol/ImageType.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QSaveFile>
#include <QtCore/QStorageInfo>
#include <QtWidgets/QFileDialog>

#include <algorithm>
#include <string>
#include <utility>

namespace lumaro {
namespace {

/// What this program puts up is smaller.
constexpr int longestSeenSide = 4096;
constexpr qsizetype longestFileName = 60;

enum class Saved : std::uint8_t { done, noPicture, noRoom, refused };

Saved written(const FileResult<std::string>& picture, const QString& path) {
    if (!picture) return Saved::noPicture;
    QSaveFile file{path};
    const auto size = static_cast<qint64>(picture->size());
    if (file.open(QIODevice::WriteOnly) && file.write(picture->data(), size) == size && file.commit()) {
        return Saved::done;
    }
    const QStorageInfo disk{QFileInfo{path}.path()};
    return disk.isValid() && disk.bytesAvailable() < size ? Saved::noRoom : Saved::refused;
}

QString textOf(Saved saved, const QString& path) {
    switch (saved) {
    case Saved::done: return Words::tr("saved as %1").arg(QFileInfo{path}.fileName());
    case Saved::noPicture: return Words::tr("the picture isn't on this computer — it can't be saved yet.");
    case Saved::noRoom: return Words::tr("it couldn't be saved — the disk is full.");
    case Saved::refused: return Words::tr("it couldn't be saved there. try another folder?");
    }
    std::unreachable();
}

// A name that every file system takes.
QString fileName(const QString& caption, const QString& otherwise) {
    static const QRegularExpression unusable{QStringLiteral(R"([^\p{L}\p{N} _-]+)"),
                                             QRegularExpression::UseUnicodePropertiesOption};
    const auto name = QString{caption}.remove(unusable).simplified().left(longestFileName);
    return name.isEmpty() ? otherwise : name;
}

} // namespace

const UUID* LargeView::mediaId() const {
    if (!item_) return nullptr;
    if (const auto* const photo = item_->payload.as<PhotoPayload>()) return &photo->mediaId;
    if (const auto* const sticker = item_->payload.as<StickerPayload>()) return &sticker->mediaId;
    return nullptr;
}

QString LargeView::caption() const {
    const auto* const photo = item_ ? item_->payload.as<PhotoPayload>() : nullptr;
    return photo == nullptr ? QString{} : qText(photo->caption);
}

double LargeView::aspect() const {
    if (!pixels_.isNull()) return double(pixels_.width()) / pixels_.height();
    const auto size = item_ ? item_->naturalSize() : Size{4, 3};
    return size.width / size.height;
}

std::vector<UUID> LargeView::all() const {
    std::vector<UUID> same;
    if (!item_) return same;
    const auto& board = app_.board();
    for (const auto& id : readingOrder(board)) {
        const auto* const item = board.find(id);
        if (item != nullptr && item->kind() == item_->kind()) same.push_back(id);
    }
    return same;
}

int LargeView::number() const {
    if (!item_) return 0;
    const auto order = all();
    return static_cast<int>(std::ranges::find(order, item_->id) - order.begin()) + 1;
}

QString LargeView::missing() const {
    if (!item_ || !pixels_.isNull()) return {};
    if (isBroken_) return Words::tr("this picture can't be shown — something in it is broken.");
    if (decoding_) return Words::tr("one moment…");
    return Words::tr("the picture is still on its way.");
}

void LargeView::say(const QString& text) {
    said_ = text;
    Q_EMIT changed();
}

void LargeView::open() {
    const auto& id = app_.editor().inHand().selection();
    const auto* const item = id ? app_.board().find(*id) : nullptr;
    if (item == nullptr || (item->kind() != ItemKind::photo && item->kind() != ItemKind::sticker)) return;
    show(*item);
}

void LargeView::show(const BoardItem& item) {
    const bool isOther = !item_ || item_->id != item.id;
    const auto before = mediaId() == nullptr ? std::optional<UUID>{} : *mediaId();
    item_ = item;
    order_ = all();
    if (isOther) said_.clear();
    if (before != *mediaId()) {
        pixels_ = {};
        isBroken_ = false;
        decode();
    }
    Q_EMIT changed();
}

void LargeView::decode() {
    decoding_.reset();
    const UUID id = *mediaId();
    if (!app_.media().has(id)) return;
    decoding_ = inBackground(
        background_,
        [&cache = app_.media(), id] {
            const auto bytes = cache.read(id);
            return bytes ? readStored(*bytes, longestSeenSide) : QImage{};
        },
        [this](QImage pixels) {
            const auto done = std::move(decoding_);
            isBroken_ = pixels.isNull();
            pixels_ = std::move(pixels);
            Q_EMIT changed();
        });
}

void LargeView::step(int pictures) {
    const auto order = all();
    const auto here = std::ranges::find(order, item_ ? item_->id : UUID{}) - order.begin();
    const auto last = std::ssize(order) - 1;
    if (!item_ || last < 0) return;
    const auto& id = order[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(here + pictures, 0, last))];
    if (id == item_->id) return;
    app_.editor().inHand().select(id);
    if (const auto* const item = app_.board().find(id)) show(*item);
}

void LargeView::hear(const AppChanges& changes) {
    if (!item_) return;
    if (changes.has(AppChange::pictures) && pixels_.isNull() && !decoding_) {
        decode();
        Q_EMIT changed();
    }
    if (!changes.has(AppChange::board) && !changes.has(AppChange::membership)) return;
    if (const auto* const item = app_.board().find(item_->id)) {
        if (*item != *item_) show(*item);
        return;
    }
    // The next one that hangs yet, or the one before.
    const auto& board = app_.board();
    const auto gone = std::ranges::find(order_, item_->id);
    const auto hangs = [&](const UUID& id) { return board.find(id) != nullptr; };
    auto next = std::find_if(gone, order_.end(), hangs);
    if (next == order_.end()) next = std::ranges::find_if(order_, hangs);
    if (next == order_.end()) {
        close();
        return Q_EMIT noticed(Words::tr("that picture has been taken down."));
    }
    const auto* const item = board.find(*next);
    app_.editor().inHand().select(item->id);
    show(*item);
    say(Words::tr("the one before has been taken down."));
}

void LargeView::save() {
    if (!isOpen()) return;
    const bool isPng = pixels_.hasAlphaChannel();
    const auto ending = isPng ? QStringLiteral("png") : QStringLiteral("jpg");
    const auto name = fileName(caption(), isPhoto() ? Words::tr("photo") : Words::tr("sticker"));
    auto* const dialog = new QFileDialog{nullptr, Words::tr("save the picture as"), {}, QStringLiteral("*.") + ending};
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(ending);
    dialog->selectFile(name + QLatin1Char{'.'} + ending);
    connect(dialog, &QFileDialog::accepted, this, [this, dialog] {
        const auto urls = dialog->selectedUrls();
        if (!urls.isEmpty()) saveTo(urls.front().toLocalFile());
    });
    dialog->open();
}

void LargeView::saveTo(const QString& path) {
    if (mediaId() == nullptr) return;
    if (path.isEmpty()) return say(textOf(Saved::refused, path));
    saving_ = inBackground(
        background_, [&cache = app_.media(), id = *mediaId(), path] { return written(cache.read(id), path); },
        [this, path](Saved saved) {
            const auto done = std::move(saving_);
            say(textOf(saved, path));
        });
}

void LargeView::close() {
    item_.reset();
    order_.clear();
    decoding_.reset();
    pixels_ = {};
    isBroken_ = false;
    said_.clear();
    Q_EMIT changed();
}

} // namespace lumaro
