// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <utility>
#include <vector>

namespace lumaro {

// Emoji of several characters. A font joins them only when they come to it together and without the sign that asks for
// the coloured form (U+FE0F), which it knows for single ones alone.

/// A text as fonts are to have it: without that sign where characters are joined, by U+200D or to a keycap.
QString withJoinedEmoji(const QString& text);

/// Where the text has keycaps: start and length. Their digits are in every font, and have to come from that of the
/// emoji.
std::vector<std::pair<qsizetype, qsizetype>> keycapsIn(const QString& text);

} // namespace lumaro
