// SPDX-License-Identifier: Apache-2.0
#include "LumaroCityView/Drawing.h"

#include "LumaroCityView/BrowserMemory.h"
#include "LumaroCityView/Outcome.h"

#include <QBuffer>
#include <QImage>
#include <QtWebEngineCore/QWebEngineDownloadRequest>
#include <QtWebEngineCore/QWebEngineLoadingInfo>
#include <QtWebEngineCore/QWebEngineScript>
#include <QtWidgets/QApplication>

namespace lumaro {
namespace {

constexpr std::int64_t maxMemory = std::int64_t{1024} * 1024 * 1024; // of all processes; docs/city-window.md has measures
constexpr std::chrono::milliseconds memoryPace{200};
// The compositor may be two frames behind the page's scripts.
constexpr int framesUntilShown = 4;
constexpr std::chrono::milliseconds frameTime{30};

} // namespace

Drawing::Drawing(const CityRequest& request)
    : request_(request), requests_(QUrl::fromEncoded(QByteArray::fromStdString(request.page))),
      page_(request, profile_) {
    profile_.setUrlRequestInterceptor(&requests_);
    profile_.setHttpCacheType(QWebEngineProfile::NoCache);
    profile_.setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    profile_.setSpellCheckEnabled(false);
    connect(&profile_, &QWebEngineProfile::downloadRequested, this, [](QWebEngineDownloadRequest* download) {
        download->cancel();
        end(Outcome::pageNotReached, "what came is no page");
    });
    connect(&page_, &QWebEnginePage::loadingChanged, this, [this](const auto& info) { loaded(info); });
    connect(&page_, &QWebEnginePage::titleChanged, this, [this] { look(); });
    connect(&page_, &QWebEnginePage::renderProcessTerminated, this,
            [] { end(Outcome::pageCrashed, "the page crashed"); });
    view_.setAttribute(Qt::WA_DontShowOnScreen);
    view_.setPage(&page_);
    view_.resize(static_cast<int>(request.width), static_cast<int>(request.height));
    view_.show();
    connect(&memoryWatch_, &QTimer::timeout, this, [] {
        if (browserMemory().value_or(0) > maxMemory) end(Outcome::pageCrashed, "the page takes too much memory");
    });
    memoryWatch_.start(memoryPace);
    page_.load(page_.address());
}

Drawing::~Drawing() {
    view_.setPage(nullptr);
}

void Drawing::loaded(const QWebEngineLoadingInfo& info) {
    constexpr int firstError = 400;
    const bool isHttp = info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain;
    if (isHttp && info.errorCode() >= firstError) {
        end(Outcome::pageNotReached, "the page's server answered " + std::to_string(info.errorCode()));
    }
    if (info.status() == QWebEngineLoadingInfo::LoadFailedStatus)
        end(Outcome::pageNotReached, "the page was not reached");
}

void Drawing::look() {
    if (isDrawn_ || page_.title() != QLatin1String{"drawn"}) return;
    isDrawn_ = true;
    waitForFrames();
}

// Frames are counted where no script of the page is.
void Drawing::waitForFrames() {
    page_.runJavaScript(
        QStringLiteral("window.shown = window.shown || 0; requestAnimationFrame(() => ++window.shown); window.shown"),
        QWebEngineScript::ApplicationWorld, [this](const QVariant& shown) {
            if (shown.toInt() >= framesUntilShown) return write();
            QTimer::singleShot(frameTime, this, [this] { waitForFrames(); });
        });
}

void Drawing::write() {
    QImage picture = view_.grab().toImage();
    picture.setDevicePixelRatio(1);
    const QSize size{static_cast<int>(request_.pixels(request_.width)),
                     static_cast<int>(request_.pixels(request_.height))};
    if (picture.size() != size) picture = picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QByteArray png;
    QBuffer buffer{&png};
    buffer.open(QIODevice::WriteOnly);
    const bool isWritten = picture.convertToFormat(QImage::Format_RGB32).save(&buffer, "PNG") &&
                           writeOut({png.constData(), static_cast<std::size_t>(png.size())});
    if (!isWritten) end(Outcome::notWritten, "the picture could not be written");
    QApplication::quit();
}

} // namespace lumaro
