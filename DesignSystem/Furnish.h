// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DesignSystem/Theme.h"

#include <QtQml/QQmlEngine>

namespace lumaro {

/// What the module's QML finds in an engine: where modules are, and the pictures that are made rather than loaded. Once
/// for each engine, before it loads anything; the fonts are `registerFonts`.
void furnish(QQmlEngine& engine);

/// The theme that the engine's QML sees; the engine owns it. After `furnish`, in a program with the module's plugin.
Theme& themeOf(QQmlEngine& engine);

} // namespace lumaro
