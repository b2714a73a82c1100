// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QNetworkProxy>
#include <QNetworkProxyFactory>
#include <QUrl>

namespace lumaro {

/// The proxy that the system wants for a URL; none for this machine itself.
QNetworkProxy systemProxyFor(const QUrl& url);

/// The same, for a network access manager.
class SystemProxyFactory final : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override { return {systemProxyFor(query.url())}; }
};

} // namespace lumaro
