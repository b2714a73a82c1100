// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtHttpClient.h"

#include "Platform/Qt/SystemProxy.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace lumaro {
namespace {

QNetworkRequest requestFor(const HttpRequest& request) {
    QNetworkRequest qt{QUrl{QString::fromStdString(request.url)}};
    for (const auto& header : request.headers) {
        qt.setRawHeader(QByteArray::fromStdString(header.name), QByteArray::fromStdString(header.value));
    }
    // Followed by hand: Qt would follow one to any host, or take it for a failure.
    qt.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    qt.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    qt.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    qt.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    return qt;
}

bool isSameOrigin(const QUrl& one, const QUrl& other) {
    const int port = one.scheme() == QStringLiteral("https") ? 443 : 80;
    return one.scheme() == other.scheme() && one.host() == other.host() && one.port(port) == other.port(port);
}

class ReplyCall final : public HttpClient::Call {
public:
    ReplyCall(QNetworkAccessManager& manager, HttpRequest request,
              std::move_only_function<void(HttpClient::Answer)> then)
        : manager_(manager), request_(std::move(request)), then_(std::move(then)) {
        constexpr double longest = std::numeric_limits<int>::max();
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { fail("no answer in time"); });
        timer_.start(static_cast<int>(std::clamp(std::ceil(request_.timeout.count() * 1000), 0.0, longest)));
        start(requestFor(request_));
    }
    ReplyCall(const ReplyCall&) = delete;
    ReplyCall& operator=(const ReplyCall&) = delete;
    ~ReplyCall() override { drop(); }

private:
    static constexpr int maxRedirects = 5;

    void start(const QNetworkRequest& request) {
        reply_ = manager_.sendCustomRequest(request, QByteArray::fromStdString(request_.method),
                                            QByteArray::fromStdString(request_.body));
        // Queued, as a request that cannot even start has finished by now.
        QObject::connect(reply_, &QNetworkReply::finished, &context_, [this] { finished(); }, Qt::QueuedConnection);
        QObject::connect(reply_, &QNetworkReply::readyRead, &context_, [this] {
            if (std::cmp_greater(reply_->bytesAvailable(), request_.maxBodyBytes)) fail("the answer is too long");
        });
    }

    void drop() {
        if (reply_ == nullptr) return;
        auto* const reply = std::exchange(reply_, nullptr);
        reply->disconnect(&context_);
        reply->abort();
        reply->deleteLater();
    }

    void finished() {
        // A call that was dropped or failed since has no reply.
        if (reply_ == nullptr) return;
        const auto status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        // Errors from here on stand for a status; those below for a line that failed, perhaps within the body.
        const auto error = reply_->error();
        const bool isWhole = error == QNetworkReply::NoError || error >= QNetworkReply::ContentAccessDenied;
        if (!isWhole || !status.isValid()) {
            fail(reply_->errorString().toStdString());
        } else if (!followed()) {
            answer(HttpResponse{status.toInt(), reply_->readAll().toStdString()});
        }
    }

    // Only what changes nothing is asked again elsewhere.
    bool followed() {
        const auto target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (target.isEmpty() || request_.method != "GET") return false;
        const auto url = reply_->url().resolved(target);
        if (!isSameOrigin(url, reply_->url()) || ++redirects_ > maxRedirects) return false;
        auto request = reply_->request();
        request.setUrl(url);
        drop();
        start(request);
        return true;
    }

    void fail(std::string message) { answer(std::unexpected(HttpFailure{std::move(message)})); }

    void answer(HttpClient::Answer answer) {
        drop();
        timer_.stop();
        // Called from a local: it may drop this call.
        auto then = std::move(then_);
        then(std::move(answer));
    }

    QNetworkAccessManager& manager_;
    HttpRequest request_;
    std::move_only_function<void(HttpClient::Answer)> then_;
    QNetworkReply* reply_ = nullptr;
    int redirects_ = 0;
    QTimer timer_;
    QObject context_;
};

} // namespace

QtHttpClient::QtHttpClient() : manager_(std::make_unique<QNetworkAccessManager>()) {
    manager_->setProxyFactory(new SystemProxyFactory);
}

QtHttpClient::~QtHttpClient() = default;

std::unique_ptr<HttpClient::Call> QtHttpClient::send(HttpRequest request, std::move_only_function<void(Answer)> then) {
    return std::make_unique<ReplyCall>(*manager_, std::move(request), std::move(then));
}

} // namespace lumaro
