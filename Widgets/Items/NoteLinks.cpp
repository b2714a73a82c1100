// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/NoteLinks.h"

#include <QtCore/QRegularExpression>

namespace lumaro {
namespace {

// What may stand behind an address in a sentence. A closing bracket belongs to the address that opened it.
QString withoutSentence(QString address) {
    const QString ends = QStringLiteral(".,;:!?'\"»”’…");
    while (!address.isEmpty()) {
        const QChar last = address.back();
        const QChar open = last == u')' ? u'(' : last == u']' ? u'[' : last == u'}' ? u'{' : QChar{};
        const bool isLoose = !open.isNull() && address.count(last) > address.count(open);
        if (!isLoose && !ends.contains(last)) break;
        address.chop(1);
    }
    return address;
}

bool leadsSomewhere(const QUrl& url) {
    const auto scheme = url.scheme();
    return url.isValid() && (scheme == u"http" || scheme == u"https") && !QUrl::toAce(url.host()).isEmpty();
}

} // namespace

std::vector<NoteLink> linksIn(const QString& text) {
    static const QRegularExpression address{
        QStringLiteral(R"((?<![\p{L}\p{N}])https?://[^\s<>"\x{FFFC}\x{2028}\x{2029}]+)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption};
    std::vector<NoteLink> links;
    auto found = address.globalMatch(text);
    while (found.hasNext() && links.size() < maxNoteLinks) {
        const auto match = found.next();
        const auto written = withoutSentence(match.captured());
        if (written.size() > maxLinkLength) continue;
        const QUrl url{written, QUrl::StrictMode};
        // People write other scripts in addresses as they are; the strict form has them encoded.
        const QUrl read = url.isValid() ? url : QUrl{written, QUrl::TolerantMode};
        if (leadsSomewhere(read)) links.push_back({match.capturedStart(), written.size(), read});
    }
    return links;
}

QString placeOf(const QUrl& link) {
    auto place = QString::fromLatin1(QUrl::toAce(link.host()));
    if (place.contains(u':')) place = u'[' + place + u']';
    return link.port() < 0 ? place : place + u':' + QString::number(link.port());
}

} // namespace lumaro
