// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/CityWindow/CityRequest.h"

#include <QtWebEngineCore/QWebEnginePage>
#include <QtWebEngineCore/QWebEngineProfile>
#include <QtWebEngineCore/QWebEngineUrlRequestInterceptor>

namespace lumaro {

/// What the page loads: from its own origin, or over https. Nothing of this computer's network but what it is itself
/// part of.
class CityRequests final : public QWebEngineUrlRequestInterceptor {
public:
    explicit CityRequests(QUrl page) : page_(std::move(page)) {}
    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    QUrl page_;
};

/// The city page of a request: it learns its key and position before its first script runs, leaves no trace on the
/// disk, and gets nothing else from this computer: no window, dialog, file, download or permission. Where it would lead
/// elsewhere, the program ends.
class CityPage final : public QWebEnginePage {
public:
    CityPage(const CityRequest& request, QWebEngineProfile& profile);

    /// Where the page is.
    const QUrl& address() const { return address_; }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType /*type*/) override { return nullptr; }
    QStringList chooseFiles(FileSelectionMode /*mode*/, const QStringList& /*old*/,
                            const QStringList& /*types*/) override {
        return {};
    }
    void javaScriptAlert(const QUrl& /*origin*/, const QString& /*text*/) override {}
    bool javaScriptConfirm(const QUrl& /*origin*/, const QString& /*text*/) override { return false; }
    bool javaScriptPrompt(const QUrl& /*origin*/, const QString& /*text*/, const QString& /*old*/,
                          QString* /*answer*/) override {
        return false;
    }
    // What a page writes there may hold its key.
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel /*level*/, const QString& /*text*/, int /*line*/,
                                  const QString& /*source*/) override {}

private:
    QUrl address_;
};

} // namespace lumaro
