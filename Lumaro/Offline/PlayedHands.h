// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <string>

class QQuickWindow;

namespace lumaro {

// What a person would do in a window, for pictures of how it looks then.

/// Presses keys such as "Tab, Ctrl+Z" after a second, one after the other.
void pressKeys(QQuickWindow& window, const QString& keys);

/// Drags something from another program over the middle of the window: "words", or else a file of that name. Nothing
/// when it is empty.
void drag(QQuickWindow& window, const std::string& what);

} // namespace lumaro
