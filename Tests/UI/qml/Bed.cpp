// SPDX-License-Identifier: Apache-2.0
#include "Tests/UI/qml/Bed.h"

#include "Lumaro/UI/Text.h"
#include "Tests/UI/FocusNodes.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

namespace lumaro {

void Bed::build() {
    // Pages let go of what there was when they hear of the new; then it goes, the application last.
    const auto app = std::move(app_);
    const auto settings = std::move(settings_);
    const auto view = std::move(view_);
    app_ = std::make_unique<AppFixture>();
    view_ = std::make_unique<AppView>(AppView::Setup{QStringLiteral("/profile"), QStringLiteral("1"), {}}, *app_->app,
                                      app_->clock, app_->sleeper);
    settings_ = std::make_unique<SettingsView>(app_->defaults, app_->loginItem);
    app_->app->onChange([this] { view_->refresh(); });
    Q_EMIT made();
}

void Bed::make() {
    build();
    app_->start();
    answer(404, QStringLiteral(R"({"code":"not_found","message":""})"));
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

bool Bed::answer(int status, const QString& body) {
    const bool isAnswered = app_->http.answer(HttpResponse{.status = status, .body = body.toStdString()});
    app_->background.runAll();
    return isAnswered;
}

QString Bed::lastRequest() const {
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

} // namespace lumaro
