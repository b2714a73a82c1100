// SPDX-License-Identifier: Apache-2.0
#include "LumaroCityView/Drawing.h"

#include "LumaroCityView/BrowserMemory.h"
#include "LumaroCityView/Outcome.h"

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QtWebEngineCore/QWebEngineDownloadRequest>
#include <QtWebEngineCore/QWebEngineLoadingInfo>
#include <QtWebEngineCore/QWebEngineScript>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <string>

namespace lumaro {
namespace {

constexpr std::int64_t maxMemory =
    std::int64_t{1024} * 1024 * 1024; // of all processes; docs/city-window.md has measures
constexpr std::chrono::milliseconds memoryPace{200};
constexpr std::chrono::milliseconds framePace{40};
constexpr double markCentre = 4; // of the page's pixels
const QColor markColour{3, 251, 67};

// Screens may have profiles of their own.
bool isNear(const QColor& one, const QColor& other) {
    constexpr int steps = 24;
    return std::abs(one.red() - other.red()) < steps && std::abs(one.green() - other.green()) < steps &&
           std::abs(one.blue() - other.blue()) < steps;
}

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
    connect(&frameWatch_, &QTimer::timeout, this, [this] { watchFrames(); });
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
    if (stage_ != Stage::loading || page_.title() != QLatin1String{"drawn"}) return;
    mark(true);
    stage_ = Stage::marked;
    frameWatch_.start(framePace);
}

// In a world that no script of the page reaches.
void Drawing::mark(bool isThere) {
    const auto script =
        isThere ? QStringLiteral("const mark = document.createElement('div');"
                                 "Object.assign(mark.style, {position: 'fixed', left: 0, top: 0, width: '8px',"
                                 " height: '8px', background: '%1', zIndex: 2147483647});"
                                 "document.documentElement.append(window.mark = mark);")
                      .arg(markColour.name())
                : QStringLiteral("window.mark.remove();");
    page_.runJavaScript(script, QWebEngineScript::ApplicationWorld);
}

// What a page has drawn is on the screen some frames later. A mark that was put there afterwards is there when that is,
// too; the first picture without it is the page's own.
void Drawing::watchFrames() {
    const QImage picture = view_.grab().toImage();
    const int place = static_cast<int>(std::lround(markCentre * request_.scale));
    const bool isMarked = isNear(picture.pixelColor(place, place), markColour);
    if (stage_ == Stage::marked && isMarked) {
        mark(false);
        stage_ = Stage::unmarked;
    } else if (stage_ == Stage::unmarked && !isMarked) {
        frameWatch_.stop();
        write(picture);
    }
}

void Drawing::write(QImage picture) {
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
    end(Outcome::drawn, "");
}

} // namespace lumaro
