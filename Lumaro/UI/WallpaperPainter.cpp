// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/WallpaperPainter.h"

#include "Lumaro/UI/Text.h"

#include <QtCore/QBuffer>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QImageReader>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <utility>

namespace lumaro {
namespace {

// A new window's pictures are decoded meanwhile; afterwards, what falls has fallen.
constexpr Seconds firstLook{2};
constexpr Seconds nextLook{1};
// Where a letter's edge is still clean.
constexpr int quality = 92;
// Behind what hangs where neither the board's paper nor the person's picture can be.
constexpr QRgb plainPaper = 0xFFF3E9D2;
// More than any screens have together; a broken one may say anything.
constexpr int mostPixels = 16384;

struct Part {
    std::string screen;
    QRect place;         ///< in pixels of the whole desktop
    QImage board;        ///< none where it does not hang
    std::string ownPath; ///< of the picture behind it; empty for the plain paper
};

QRect pixelsOf(const QScreen& screen) {
    return {screen.geometry().topLeft(), (QSizeF{screen.size()} * screen.devicePixelRatio()).toSize()};
}

/// The person's own picture, filling the place; whatever the file holds, at most so many pixels.
QImage ownPicture(const std::string& path, QSize size) {
    QImageReader reader{qText(path)};
    reader.setAutoTransform(true);
    const auto whole = reader.size();
    if (whole.isValid()) reader.setScaledSize(whole.scaled(size, Qt::KeepAspectRatioByExpanding));
    auto picture = reader.read();
    if (picture.isNull()) return picture;
    // Its metadata may have turned it.
    return picture.scaled(size, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
}

void paintPart(QPainter& painter, const Part& part, QPoint corner) {
    const QRect place{part.place.topLeft() - corner, part.place.size()};
    if (part.board.isNull() || part.board.hasAlphaChannel()) {
        const auto own = part.ownPath.empty() ? QImage{} : ownPicture(part.ownPath, place.size());
        painter.fillRect(place, QColor{plainPaper});
        const QSize over = own.size() - place.size();
        if (!own.isNull()) painter.drawImage(place, own, {{over.width() / 2, over.height() / 2}, place.size()});
    }
    painter.drawImage(place, part.board);
}

std::expected<std::string, std::string> writePicture(FileSystem& files, const BoardPainter::Order& order,
                                                     const std::string& ending, const std::vector<Part>& parts) {
    QRect all;
    for (const auto& part : parts) all |= part.place;
    if (all.isEmpty() || all.width() > mostPixels || all.height() > mostPixels) {
        return std::unexpected("the screens are of no size");
    }
    QImage picture{all.size(), QImage::Format_RGB32};
    picture.fill(QColor{plainPaper});
    QPainter painter{&picture};
    for (const auto& part : parts) paintPart(painter, part, all.topLeft());
    painter.end();
    QByteArray bytes;
    QBuffer buffer{&bytes};
    if (!picture.save(&buffer, "jpg", quality)) return std::unexpected("the picture cannot be written");
    auto path = order.folder + "/" + order.name + ending + ".jpg";
    const auto done = files.writeFile(path, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (!done) return std::unexpected(done.error().message);
    return path;
}

std::expected<std::vector<BoardPicture>, std::string> writeAll(FileSystem& files, const BoardPainter::Order& order,
                                                               const std::vector<Part>& parts) {
    std::vector<BoardPicture> pictures;
    if (order.isOnePicture) {
        auto path = writePicture(files, order, "", parts);
        if (!path) return std::unexpected(path.error());
        pictures.push_back({"", std::move(*path)});
        return pictures;
    }
    for (const auto& part : parts) {
        if (part.board.isNull()) continue;
        auto path = writePicture(files, order, "-" + std::to_string(pictures.size()), {part});
        if (!path) return std::unexpected(path.error());
        pictures.push_back({part.screen, std::move(*path)});
    }
    return pictures;
}

} // namespace

WallpaperPainter::WallpaperPainter(Ports ports) : ports_(std::move(ports)) {
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](QScreen* screen) { windows_.erase(screen); });
}
WallpaperPainter::~WallpaperPainter() = default;

void WallpaperPainter::paint(Order order, Painted then) {
    then_ = std::move(then);
    const bool isNew = makeReady(static_cast<bool>(order.ownPicture));
    settling_ = ports_.sleeper.wait(isNew ? firstLook : nextLook, [this, order = std::move(order)] { grab(order); });
}

void WallpaperPainter::stop() {
    then_ = nullptr;
    settling_ = nullptr;
    windows_.clear();
}

bool WallpaperPainter::makeReady(bool isOverOwn) {
    bool isAnyNew = false;
    for (const auto& [screen, isChosen] : ports_.places()) {
        auto& window = windows_[screen];
        if (!isChosen) window.reset();
        if (isChosen && !window) {
            window = ports_.makeWindow(*screen);
            window->setProperty("isStill", true);
            isAnyNew = true;
        }
        if (!window) continue;
        window->setProperty("isOverOwn", isOverOwn);
        window->setScreen(screen);
        window->setGeometry(screen->geometry());
        if (window->handle() == nullptr) window->create();
        // No window system tells a window that is not shown how large it is.
        window->contentItem()->setSize(QSizeF{screen->size()});
    }
    return isAnyNew;
}

void WallpaperPainter::grab(const Order& order) {
    std::vector<Part> parts;
    for (const auto& [screen, isChosen] : ports_.places()) {
        const auto found = windows_.find(screen);
        const bool hangs = isChosen && found != windows_.end() && found->second;
        // What is left free shows the person's own, where one picture lies over all.
        const bool showsOwn = order.ownPicture && (hangs || order.isOnePicture);
        parts.push_back({.screen = screen->name().toStdString(),
                         .place = pixelsOf(*screen),
                         .board = hangs ? found->second->grabWindow() : QImage{},
                         .ownPath = showsOwn ? order.ownPicture(screen->name().toStdString()) : std::string{}});
    }
    task_ = inBackground(
        ports_.background,
        [&files = ports_.files, order, parts = std::move(parts)] { return writeAll(files, order, parts); },
        [this](std::expected<std::vector<BoardPicture>, std::string> pictures) {
            if (auto then = std::exchange(then_, nullptr)) then(std::move(pictures));
        });
}

} // namespace lumaro
