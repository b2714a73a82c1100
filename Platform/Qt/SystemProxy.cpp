// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/SystemProxy.h"

#include <QHostAddress>

namespace lumaro {

QNetworkProxy systemProxyFor(const QUrl& url) {
    const auto host = url.host();
    if (host == QStringLiteral("localhost") || QHostAddress{host}.isLoopback()) return QNetworkProxy::NoProxy;
    // Systems name proxies for HTTP, and sockets go the same way.
    QUrl web = url;
    if (url.scheme() == QStringLiteral("wss")) web.setScheme(QStringLiteral("https"));
    if (url.scheme() == QStringLiteral("ws")) web.setScheme(QStringLiteral("http"));
    const auto proxies = QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery{web});
    return proxies.isEmpty() ? QNetworkProxy{QNetworkProxy::NoProxy} : proxies.front();
}

} // namespace lumaro
