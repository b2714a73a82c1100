// SPDX-License-Identifier: Apache-2.0
#include "LumaroCityView/CityPage.h"

#include "LumaroCityView/Outcome.h"
#include "LumaroCore/Support/Wire.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtWebEngineCore/QWebEngineScript>
#include <QtWebEngineCore/QWebEngineScriptCollection>
#include <QtWebEngineCore/QWebEngineSettings>

namespace lumaro {
namespace {

// Scheme, host and port as browsers write them.
QString originOf(const QUrl& url) {
    const int usual = url.scheme() == QLatin1String{"https"} ? 443 : 80;
    QUrl origin;
    origin.setScheme(url.scheme());
    origin.setHost(url.host());
    if (url.port(usual) != usual) origin.setPort(url.port());
    return origin.toString(QUrl::FullyEncoded);
}

// Frozen, and on no page but the one that was asked for, whatever it comes to load.
QString introduction(const CityRequest& request, const QUrl& page) {
    const QJsonObject known{{QStringLiteral("key"), QString::fromStdString(request.key)},
                            {QStringLiteral("lat"), request.lat},
                            {QStringLiteral("lon"), request.lon},
                            {QStringLiteral("at"), static_cast<double>(Wire::milliseconds(request.at))}};
    const QJsonObject origin{{QStringLiteral("of"), originOf(page)}};
    const auto text = [](const QJsonObject& object) {
        return QString::fromUtf8(QJsonDocument{object}.toJson(QJsonDocument::Compact));
    };
    return QStringLiteral("if (window === window.top && location.origin === (%1).of) "
                          "Object.defineProperty(window, 'lumaro', {value: Object.freeze(%2)});")
        .arg(text(origin), text(known));
}

} // namespace

void CityRequests::interceptRequest(QWebEngineUrlRequestInfo& info) {
    const QUrl url = info.requestUrl();
    const auto scheme = url.scheme();
    const bool isInside = scheme == QLatin1String{"data"} || scheme == QLatin1String{"blob"};
    const bool isSecure = scheme == QLatin1String{"https"} || scheme == QLatin1String{"wss"};
    if (!isInside && !isSecure && originOf(url) != originOf(page_)) info.block(true);
}

CityPage::CityPage(const CityRequest& request, QWebEngineProfile& profile)
    : QWebEnginePage(&profile), address_(QUrl::fromEncoded(QByteArray::fromStdString(request.page), QUrl::StrictMode)) {
    using Settings = QWebEngineSettings;
    for (const auto never :
         {Settings::AutoLoadIconsForPage, Settings::PluginsEnabled, Settings::PdfViewerEnabled,
          Settings::JavascriptCanOpenWindows, Settings::JavascriptCanAccessClipboard, Settings::LocalStorageEnabled,
          Settings::LocalContentCanAccessRemoteUrls, Settings::LocalContentCanAccessFileUrls,
          Settings::HyperlinkAuditingEnabled, Settings::ScreenCaptureEnabled, Settings::FullScreenSupportEnabled,
          Settings::DnsPrefetchEnabled, Settings::NavigateOnDropEnabled, Settings::ErrorPageEnabled,
          Settings::AllowRunningInsecureContent, Settings::AllowGeolocationOnInsecureOrigins}) {
        settings()->setAttribute(never, false);
    }
    for (const auto always : {Settings::ShowScrollBars}) {
        settings()->setAttribute(always, false);
    }
    settings()->setAttribute(Settings::WebGLEnabled, true);
    settings()->setAttribute(Settings::PlaybackRequiresUserGesture, true);
    settings()->setAttribute(Settings::WebRTCPublicInterfacesOnly, true);
    settings()->setUnknownUrlSchemePolicy(Settings::DisallowUnknownUrlSchemes);
    setAudioMuted(true);

    QWebEngineScript script;
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setRunsOnSubFrames(false);
    script.setSourceCode(introduction(request, address_));
    scripts().insert(script);

    connect(this, &QWebEnginePage::featurePermissionRequested, this, [this](const QUrl& origin, Feature feature) {
        setFeaturePermission(origin, feature, PermissionDeniedByUser);
    });
}

// Frames within the page may show others; they learn nothing.
bool CityPage::acceptNavigationRequest(const QUrl& url, NavigationType /*type*/, bool isMainFrame) {
    if (!isMainFrame || originOf(url) == originOf(address_)) return true;
    end(Outcome::pageLeftItsOrigin, "the page leads to another server");
}

} // namespace lumaro
