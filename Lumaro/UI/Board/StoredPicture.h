// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

#include <string_view>

class QImageReader;

namespace lumaro {

/// A picture that the cache holds, its longest side at most `side` pixels, in a format that is painted fast. Null when
/// it is none, or is far larger than any that this program puts up: the room did not look into it. On any thread.
QImage readStored(QImageReader& reader, int side);
QImage readStored(std::string_view bytes, int side);

} // namespace lumaro
