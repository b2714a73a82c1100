// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

#include <vector>

namespace lumaro {

/// A web address in a text, as people wrote it there.
struct NoteLink {
    qsizetype start = 0;
    qsizetype length = 0;
    QUrl url;

    bool operator==(const NoteLink&) const = default;
};

/// As many as are told apart in one text, and as long as each may be; what is beyond stays text.
inline constexpr std::size_t maxNoteLinks = 20;
inline constexpr qsizetype maxLinkLength = 2000;

/// The addresses of "http" and "https" in the text, in order; anything else is no link. A stop, comma or bracket that
/// ends a sentence is no part of them.
std::vector<NoteLink> linksIn(const QString& text);

/// Where the address leads, to be read before it is opened: its host in full and, if it names one, its port. A host
/// with letters that may be taken for others is spelled as it is on the wire ("xn--..."). A name in front of the host,
/// which may look like one, is not told.
QString placeOf(const QUrl& link);

} // namespace lumaro
