// SPDX-License-Identifier: Apache-2.0
#include "Tests/UI/qml/Bed.h"

#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardModel/BoardJson.h"
#include "LumaroCore/Support/Wire.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QAccessible>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtGui/QDropEvent>
#include <QtGui/QPainter>
#include <QtGui/QPointingDevice>
#include <QtGui/QTabletEvent>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>

#include <chrono>
#include <utility>

namespace lumaro {
namespace {

UUID idOf(const QString& itemId) {
    return UUID::parse(itemId.toStdString()).value();
}

struct FocusNodes {
    int reached = 0;
    QStringList unnamed;
};

void walk(QQuickItem& item, const QString& path, FocusNodes& found) {
    if (!item.isVisible()) return;
    const auto here = path + QLatin1Char{'/'} + QString::fromLatin1(item.metaObject()->className());
    if (item.activeFocusOnTab() && item.isEnabled()) {
        ++found.reached;
        auto* const node = QAccessible::queryAccessibleInterface(&item);
        if (node == nullptr || node->text(QAccessible::Name).trimmed().isEmpty()) found.unnamed.append(here);
    }
    const auto children = item.childItems();
    for (auto* const child : children) walk(*child, here, found);
}

/// What another program offers of a picture: encoded, and decoded if Qt has to.
class ForeignPicture final : public QMimeData {
public:
    ForeignPicture(QByteArray png, int& decoded) : png_(std::move(png)), decoded_(decoded) {}

    QStringList formats() const override {
        return {QStringLiteral("image/png"), QStringLiteral("application/x-qt-image")};
    }

private:
    QVariant retrieveData(const QString& format, QMetaType /*wanted*/) const override {
        if (format == QStringLiteral("image/png")) return png_;
        ++decoded_;
        return QImage::fromData(png_);
    }

    QByteArray png_;
    int& decoded_;
};

FocusNodes focusNodes(QQuickItem& root) {
    QAccessible::setActive(true);
    FocusNodes found;
    walk(root, {}, found);
    return found;
}

} // namespace

void Bed::build(const std::string& server) {
    // Pages let go of what there was when they hear of the new; then it goes, the application last.
    const auto app = std::move(app_);
    const auto settings = std::move(settings_);
    const auto music = std::move(music_);
    const auto speech = std::move(speech_);
    const auto view = std::move(view_);
    const auto scene = std::move(scene_);
    const auto place = std::move(place_);
    const auto editor = std::move(editor_);
    const auto pictures = std::move(pictures_);
    app_ = std::make_unique<AppFixture>(server);
    view_ = std::make_unique<AppView>(AppView::Setup{QStringLiteral("/profile"), QStringLiteral("1"), {}}, *app_->app,
                                      app_->clock, app_->sleeper);
    settings_ = std::make_unique<SettingsView>(app_->defaults, app_->loginItem);
    music_ = std::make_unique<MusicView>(*app_->app);
    scene_ = std::make_unique<BoardScene>(BoardScene::Ports{*app_->app, app_->clock, app_->sleeper, app_->background});
    place_ = std::make_unique<PlaceView>(PlaceView::Ports{*app_->app, *scene_, towns_});
    speech_ = std::make_unique<PartnerSpeech>(*app_->app, app_->sleeper);
    editor_ = std::make_unique<EditorView>(*app_->app, app_->clock);
    pictures_ = std::make_unique<PictureExchange>(*app_->app, app_->ids, app_->background);
    app_->app->onNews([this](const AppNews& news) {
        view_->refresh();
        scene_->hear(news.changed);
        editor_->hear(news);
        pictures_->hear(news.changed);
        music_->hear(news.changed);
        speech_->hear(news);
        for (const auto& text : news.quickNotes) quickNote_ = qText(text.value_or(""));
    });
    Q_EMIT made();
}

void Bed::make() {
    build();
    app_->start();
    answer(404, QStringLiteral(R"({"code":"not_found","message":""})"));
}

void Bed::makeNowhere() {
    build({});
    app_->start();
}

void Bed::answerHomeRoom(bool starts) {
    if (!starts) return app_->homeRoom.answer(std::unexpected("no such program"));
    app_->homeRoom.answer(HomeRoom::Running{.port = 7700, .host = "ada-laptop.local"});
}

void Bed::roomsNearby(const QStringList& owners) {
    std::vector<NearbyRoom> rooms;
    for (const auto& owner : owners) {
        const auto host = "192.168.1." + std::to_string(rooms.size() + 1);
        rooms.push_back({.name = owner.toStdString(), .host = host, .port = 7700});
    }
    app_->nearby.tell(rooms);
}

void Bed::makeLocked() {
    build();
    app_->keyring.refusal = SecretStatus::locked;
    app_->start();
    app_->pass(Seconds{11});
}

void Bed::openKeychain() {
    app_->keyring.refusal.reset();
    app_->pass(Seconds{0});
}

void Bed::makeWithoutKeyring() {
    build();
    app_->start();
    answer(404, QStringLiteral(R"({"code":"not_found","message":""})"));
    app_->keyring.refusal = SecretStatus::noService;
}

void Bed::speakPseudo(bool speaks) {
    speaks ? QCoreApplication::installTranslator(&pseudo_) : QCoreApplication::removeTranslator(&pseudo_);
}

int Bed::textsSeen(QQuickItem* root) const {
    return lumaro::textsSeen(*root);
}

QStringList Bed::textFaults(QQuickItem* root, const QStringList& own) const {
    return lumaro::textFaults(*root, own);
}

bool Bed::answer(int status, const QString& body) {
    const bool isAnswered = app_->http.answer(HttpResponse{.status = status, .body = body.toStdString()});
    app_->background.runAll();
    return isAnswered;
}

QString Bed::lastRequest() const {
    if (app_->http.requests.empty()) return {};
    const auto& request = app_->http.requests.back();
    return qText(request.method + " " + request.url + " " + request.body);
}

void Bed::partnerComes(const QString& name) {
    app_->rooms.listener->opened({});
    ServerMessage::Welcome welcome;
    welcome.roster = PartnerSet::both();
    welcome.names = SlotNames{"ann", name.toStdString()};
    app_->rooms.say(std::move(welcome));
}

QString Bed::storedName() const {
    return qText(app_->state().myDisplayName);
}

void Bed::copy(const QString& text) const {
    QGuiApplication::clipboard()->setText(text);
}

int Bed::reached(QQuickItem* root) const {
    return focusNodes(*root).reached;
}

QStringList Bed::unnamed(QQuickItem* root) const {
    return focusNodes(*root).unnamed;
}

// On a board.

void Bed::makeOnBoard() {
    build();
    app_->goOnBoard();
    partnerComes(QStringLiteral("bo"));
}

QString Bed::hang(QVariantMap item) {
    const auto now = std::chrono::floor<std::chrono::milliseconds>(app_->clock.now()).time_since_epoch().count();
    const QVariantMap usual{{QStringLiteral("id"), qText(app_->ids.next())},
                            {QStringLiteral("rotationDegrees"), 0},
                            {QStringLiteral("scale"), 1},
                            {QStringLiteral("z"), items().size()},
                            {QStringLiteral("author"), QStringLiteral("b")},
                            {QStringLiteral("createdAt"), qlonglong{now}},
                            {QStringLiteral("updatedAt"), qlonglong{now}}};
    for (const auto& [field, value] : usual.asKeyValueRange()) {
        if (!item.contains(field)) item[field] = value;
    }
    const auto json = QJsonDocument::fromVariant(item).toJson(QJsonDocument::Compact);
    const auto read = Wire::decode<BoardItem>(json.toStdString());
    if (!read) qFatal("%s: %s", read.error().path.c_str(), read.error().message.c_str());
    app_->relay({Op{Upsert{*read}}});
    return item[QStringLiteral("id")].toString();
}

void Bed::partnerPlays(const QString& title, const QString& artist) {
    ServerMessage::Presence presence;
    presence.from = PartnerID::b;
    presence.nowPlaying = NowPlaying{.isPlaying = true,
                                     .progressMs = 83'000,
                                     .sampledAt = app_->clock.now(),
                                     .durationMs = 225'000,
                                     .title = title.toStdString(),
                                     .artist = artist.toStdString(),
                                     .artworkURL = std::nullopt};
    app_->rooms.say(std::move(presence));
}

void Bed::answerPosition(const QString& answer) {
    const auto access = fromName<LocationAccess>(answer.toStdString());
    if (access) return app_->positions.answer({.access = *access, .position = std::nullopt});
    app_->positions.answer({38.71234, -9.13567});
}

QString Bed::toldPosition() const {
    const auto& here = app_->state().ownPresence.here;
    return here ? QStringLiteral("%1 %2").arg(here->lat).arg(here->lon) : QString{};
}

void Bed::partnerIsInLisbon() {
    ServerMessage::Presence presence;
    presence.from = PartnerID::b;
    presence.here = Here{.lat = 38.71,
                         .lon = -9.13,
                         .label = "alfama",
                         .city = "Lisboa",
                         .tz = "Europe/Lisbon",
                         .since = app_->clock.now(),
                         .sampledAt = app_->clock.now(),
                         .weather = Weather{.tempC = 16.6,
                                            .feelsC = 15.2,
                                            .code = 63,
                                            .isDay = true,
                                            .hiC = 19.0,
                                            .loC = 12.4,
                                            .cloudLow = {},
                                            .cloudMid = {},
                                            .cloudHigh = {},
                                            .visibilityM = {},
                                            .windDeg = 270.0,
                                            .windKmh = 24.0,
                                            .sampledAt = app_->clock.now()}};
    app_->rooms.say(std::move(presence));
}

void Bed::partnerSharesHours(const QString& zone) {
    ServerMessage::Presence presence;
    presence.from = PartnerID::b;
    presence.zone = zone.toStdString();
    app_->rooms.say(std::move(presence));
}

void Bed::partnerHasSeen() {
    ServerMessage::Presence presence;
    presence.from = PartnerID::b;
    presence.seen = app_->clock.now();
    app_->rooms.say(std::move(presence));
}

void Bed::partnerTakesDown(const QString& itemId) {
    app_->relay(*Edits::takeDown(app_->app->board(), idOf(itemId), {PartnerID::b, app_->clock.now()}));
}

void Bed::refuse() {
    app_->rooms.say(ServerMessage::Error{{std::string{ServerErrorCode::unauthorized}}, ""});
}

void Bed::breakLine() {
    app_->rooms.listener->stateChanged({ConnectionState::Waiting{.attempt = 1, .delay = Seconds{1}}});
}

double Bed::now() const {
    return static_cast<double>(
        std::chrono::floor<std::chrono::milliseconds>(app_->clock.now()).time_since_epoch().count());
}

void Bed::watchLinks() {
    openedLinks_.clear();
    for (const auto* const scheme : {"http", "https", "file"}) {
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "opened");
    }
}

QVariantMap Bed::item(const QString& itemId) const {
    const auto* const found = app_->app->board().find(idOf(itemId));
    if (found == nullptr) return {};
    return QJsonDocument::fromJson(QByteArray::fromStdString(*Wire::encode(*found))).object().toVariantMap();
}

QStringList Bed::items() const {
    QStringList ids;
    for (const auto& item : app_->app->board().items) ids.append(qText(item.id));
    return ids;
}

QUrl Bed::picture() const {
    QImage picture{240, 120, QImage::Format_RGB32};
    picture.fill(0xFFF8F0E4);
    QPainter{&picture}.fillRect(90, 30, 60, 60, QColor{0xB0, 0x30, 0x20});
    const auto path = folder_.filePath(QStringLiteral("square.png"));
    if (!picture.save(path)) qFatal("no picture can be written");
    return QUrl::fromLocalFile(path);
}

void Bed::putUpSticker(const QUrl& file) {
    pictures_->putUp(file, true, std::nullopt);
    app_->background.runAll();
}

void Bed::fillDisk(bool isFull) {
    app_->files.fault = [isFull](std::string_view call) {
        return isFull && call == "writeFile" ? std::optional{FileFault::noSpace} : std::nullopt;
    };
}

bool Bed::hasCopiedPicture() const {
    const auto* const data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr && data->hasImage();
}

bool Bed::choose(const QUrl& file) const {
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (qobject_cast<QFileDialog*>(window) == nullptr || !window->isVisible()) continue;
        auto* const name = window->findChild<QLineEdit*>();
        name->setText(file.toLocalFile());
        QTest::keyClick(name, Qt::Key_Return);
        app_->background.runAll();
        return true;
    }
    return false;
}

void Bed::drop(QQuickItem* on, QPointF place, const QString& type, const QString& data) const {
    QMimeData dragged;
    dragged.setData(type, data.toUtf8());
    fall(*on, place, dragged);
}

bool Bed::drag(QQuickItem* over, QPointF place, const QString& type, const QString& data) const {
    QMimeData dragged;
    dragged.setData(type, data.toUtf8());
    QDragEnterEvent enter{over->mapToScene(place).toPoint(), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier};
    enter.ignore();
    QCoreApplication::sendEvent(over->window(), &enter);
    return enter.isAccepted();
}

void Bed::dragAway(QQuickItem* over) const {
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(over->window(), &leave);
}

void Bed::fall(QQuickItem& on, QPointF place, QMimeData& dragged) const {
    const auto at = on.mapToScene(place);
    QDragEnterEvent enter{at.toPoint(), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier};
    QDropEvent drop{at, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier};
    for (QEvent* const event : {static_cast<QEvent*>(&enter), static_cast<QEvent*>(&drop)}) {
        QCoreApplication::sendEvent(on.window(), event);
    }
    app_->background.runAll();
}

void Bed::pressPen(QQuickItem* on, QPointF place, double pressure) const {
    const auto at = on->mapToScene(place);
    QTabletEvent event{QEvent::TabletPress,
                       QPointingDevice::primaryPointingDevice(),
                       at,
                       at,
                       pressure,
                       0,
                       0,
                       0,
                       0,
                       0,
                       Qt::NoModifier,
                       Qt::LeftButton,
                       Qt::LeftButton};
    QCoreApplication::sendEvent(on->window(), &event);
}

QByteArray Bed::pictureBytes() const {
    QFile file{picture().toLocalFile()};
    if (!file.open(QIODevice::ReadOnly)) qFatal("no picture can be read");
    return file.readAll();
}

void Bed::dropPicture(QQuickItem* on, QPointF place) const {
    QMimeData dragged;
    dragged.setData(QStringLiteral("image/png"), pictureBytes());
    dragged.setUrls({QUrl{QStringLiteral("https://pictures.example/square.png")}});
    fall(*on, place, dragged);
}

void Bed::copyPicture() {
    decodedAtOnce_ = 0;
    QGuiApplication::clipboard()->setMimeData(new ForeignPicture{pictureBytes(), decodedAtOnce_});
}

} // namespace lumaro
