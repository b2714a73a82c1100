// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/AppView.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/StatusLine.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Wire.h"

#include <QtCore/QSaveFile>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QFileDialog>

#include <chrono>
#include <utility>

namespace lumaro {

AppView::AppView(Setup setup, AppModel& app, WallClock& clock, Sleeper& sleeper)
    : setup_(std::move(setup)), app_(app), clock_(clock), sleeper_(sleeper),
      isRetrying_(isRetrying(false, app.state().connection)), face_(appFace(app.state(), clock.now(), isRetrying_)),
      home_(app) {
    watchCode();
}

void AppView::refresh() {
    isRetrying_ = isRetrying(isRetrying_, app_.state().connection);
    auto face = appFace(app_.state(), clock_.now(), isRetrying_);
    const bool isNew = face != face_;
    face_ = std::move(face);
    watchCode();
    home_.refresh();
    if (isNew) Q_EMIT faceChanged();
}

void AppView::watchCode() {
    const auto& code = app_.state().shareCode;
    if (!code || face_.isCodeOver) return codeTask_.reset();
    // To when the next minute of what is left begins.
    const auto left = code->expiresAt - clock_.now();
    const auto partial = left % std::chrono::minutes{1};
    const auto pause = partial > Microseconds{0} ? partial : Microseconds{std::chrono::minutes{1}};
    codeTask_ = sleeper_.wait(pause, [this] { refresh(); });
}

// Onto a board.

void AppView::startOurBoard() {
    app_.pairing().startOurBoard();
}

void AppView::joinByCode(const QString& typed) {
    app_.pairing().joinByCode(typed.toStdString(), {OwnBoard::askedAbout, {}});
}

void AppView::joinByLink(const QString& text) {
    app_.pairing().joinByLink(text.toStdString());
}

void AppView::chooseOneself(int person) {
    app_.pairing().chooseOneself(person == 0 ? PartnerID::a : PartnerID::b);
}

void AppView::acceptInvite(bool accepts) {
    app_.pairing().acceptInvite(accepts);
}

void AppView::forgetPairingFailure() {
    app_.pairing().forgetFailure();
}

void AppView::goTo(const QString& step) {
    app_.pairing().setOnboarding(fromName<OnboardingStep>(step.toStdString()));
}

void AppView::setName(const QString& name) {
    const auto trimmed = name.trimmed();
    if (trimmed != face_.myName) app_.people().setMyName(trimmed.toStdString());
}

void AppView::retryKeychain() {
    app_.retryKeychain();
}

void AppView::keepSecretsInFile(bool agreed) {
    app_.keepSecretsInFile(agreed);
}

// While on it.

void AppView::mintCode() {
    app_.invitations().mintCode();
}

void AppView::copyText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

void AppView::makeLink() {
    app_.invitations().mintLink();
}

void AppView::checkLink() {
    app_.invitations().checkLink();
}

void AppView::resetLinks() {
    app_.invitations().resetLinks();
}

void AppView::releasePartner() {
    app_.releasePartner();
}

void AppView::leaveBoard() {
    app_.leaveBoard();
}

void AppView::setShowsOnDesktop(bool shows) {
    app_.desktop().set(shows);
}

void AppView::shareSeen(bool shares) {
    app_.seen().share(shares);
}

void AppView::exportBoard(const QUrl& file) {
    const auto text = Wire::encode(app_.board());
    QSaveFile out{file.toLocalFile()};
    const bool isWritten = text && out.open(QIODevice::WriteOnly) &&
                           out.write(text->data(), static_cast<qint64>(text->size())) >= 0 && out.commit();
    Q_EMIT noticed(isWritten ? Words::tr("your board is in %1").arg(file.fileName())
                             : Words::tr("the board couldn't be written there"));
}

void AppView::askWhereToExport() {
    auto* const dialog = new QFileDialog{nullptr, Words::tr("a copy of our board")};
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("json"));
    dialog->selectFile(Words::tr("our board") + QStringLiteral(".json"));
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString& file) { exportBoard(QUrl::fromLocalFile(file)); });
    dialog->open();
}

void AppView::openFolder() const {
    QDesktopServices::openUrl(QUrl::fromLocalFile(setup_.folder));
}

} // namespace lumaro
