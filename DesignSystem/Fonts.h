// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QFont>

namespace lumaro {

/// The family of controls, with figures of one width.
inline const QString sansFamily = QStringLiteral("Nunito");
/// The family of notes and captions.
inline const QString handFamily = QStringLiteral("Caveat");

/// The family of emoji, where it is installed.
inline const QString emojiFamily = QStringLiteral("Noto Color Emoji");

/// Makes the fonts that come with the program known, and the sans the application's. Once, after the application
/// object.
void registerFonts();

/// A font of ours in pixels, with the fonts behind it that have emoji and other scripts.
QFont sansFont(double pixels, QFont::Weight weight = QFont::Normal);
QFont handFont(double pixels, QFont::Weight weight = QFont::Normal);

} // namespace lumaro
