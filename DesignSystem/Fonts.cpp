// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Fonts.h"

#include <QtCore/QResource>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>

#include <algorithm>

static void initFonts() {
    Q_INIT_RESOURCE(lumaro_fonts);
}

namespace lumaro {
namespace {

QFont font(const QString& family, double pixels, QFont::Weight weight) {
    QFont font;
    // Without a named font for emoji several come out black and white.
    font.setFamilies({family, QStringLiteral("Noto Sans"), emojiFamily});
    font.setPixelSize(std::max(1, qRound(pixels)));
    font.setWeight(weight);
    return font;
}

} // namespace

void registerFonts() {
    initFonts();
    for (const auto* const file :
         {"Nunito-Regular", "Nunito-SemiBold", "Nunito-ExtraBold", "Caveat-Regular", "Caveat-Bold"}) {
        // Where it lies in the program: read from a file of resources it would be in memory twice.
        const QResource font{QStringLiteral(":/lumaro/fonts/%1.ttf").arg(QLatin1String{file})};
        QFontDatabase::addApplicationFontFromData(font.uncompressedData());
    }
    QGuiApplication::setFont(sansFont(15));
}

QFont sansFont(double pixels, QFont::Weight weight) {
    return font(sansFamily, pixels, weight);
}

QFont handFont(double pixels, QFont::Weight weight) {
    return font(handFamily, pixels, weight);
}

} // namespace lumaro
