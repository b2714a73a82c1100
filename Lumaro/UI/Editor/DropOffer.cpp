// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/DropOffer.h"

#include "Lumaro/UI/Editor/PictureExchange.h"

#include <QtCore/QMimeDatabase>

#include <algorithm>

namespace lumaro {
namespace {

bool isNamedLikeAPicture(const QUrl& url) {
    const auto type = QMimeDatabase{}.mimeTypeForFile(url.toLocalFile(), QMimeDatabase::MatchExtension);
    return type.name().startsWith(QStringLiteral("image/"));
}

} // namespace

QString DropOffer::kindOf(const QStringList& formats, const QList<QUrl>& urls, bool hasText) {
    if (std::ranges::any_of(urls, &QUrl::isLocalFile)) {
        const bool isTaken = urls.size() <= mostFiles && std::ranges::all_of(urls, [](const QUrl& url) {
                                 return url.isLocalFile() && isNamedLikeAPicture(url);
                             });
        return isTaken ? QStringLiteral("files") : QString{};
    }
    if (!PictureExchange::pictureFormat(formats).isEmpty()) return QStringLiteral("picture");
    return hasText ? QStringLiteral("text") : QString{};
}

} // namespace lumaro
