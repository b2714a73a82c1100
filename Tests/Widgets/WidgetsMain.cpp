// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Fonts.h"

#include <QtGui/QGuiApplication>

#include <gtest/gtest.h>

// Fonts need an application, and no display.
int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&count, arguments);
    const QGuiApplication application{count, arguments};
    lumaro::registerFonts();
    return RUN_ALL_TESTS();
}
