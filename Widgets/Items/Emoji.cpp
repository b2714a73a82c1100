// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Emoji.h"

#include <QtCore/QTextBoundaryFinder>

namespace lumaro {
namespace {

constexpr char16_t joiner = 0x200D;
constexpr char16_t colourSign = 0xFE0F;
constexpr char16_t keycap = 0x20E3;

/// Calls `visit` with start and length of each character as people count them.
template <class Visit>
void forEachCluster(const QString& text, Visit visit) {
    QTextBoundaryFinder clusters{QTextBoundaryFinder::Grapheme, text};
    for (qsizetype start = 0, end = clusters.toNextBoundary(); end > start;
         start = end, end = clusters.toNextBoundary())
        visit(start, end - start);
}

} // namespace

QString withJoinedEmoji(const QString& text) {
    if (!text.contains(QChar{colourSign})) return text;
    QString joined;
    joined.reserve(text.size());
    forEachCluster(text, [&](qsizetype start, qsizetype length) {
        auto cluster = text.mid(start, length);
        if (cluster.contains(QChar{joiner}) || cluster.contains(QChar{keycap})) cluster.remove(QChar{colourSign});
        joined += cluster;
    });
    return joined;
}

std::vector<std::pair<qsizetype, qsizetype>> keycapsIn(const QString& text) {
    std::vector<std::pair<qsizetype, qsizetype>> found;
    if (!text.contains(QChar{keycap})) return found;
    forEachCluster(text, [&](qsizetype start, qsizetype length) {
        if (length > 1 && text.mid(start, length).contains(QChar{keycap})) found.emplace_back(start, length);
    });
    return found;
}

} // namespace lumaro
