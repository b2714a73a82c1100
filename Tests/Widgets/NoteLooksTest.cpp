// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/NoteLooks.h"

#include "DesignSystem/Contrast.h"
#include "DesignSystem/Tokens.h"
#include "LumaroCore/BoardModel/NoteLook.h"
#include "LumaroCore/Support/EnumNames.h"
#include "Widgets/Items/Palette.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <gtest/gtest.h>

#include <set>

namespace lumaro {
namespace {

constexpr std::array lights{Appearance::light, Appearance::dark};
constexpr std::array backgrounds{BackgroundID::butter, BackgroundID::blush, BackgroundID::sage,
                                 BackgroundID::sky,    BackgroundID::lilac, BackgroundID::oat};

QString named(std::string_view name) {
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

std::vector<QString> storedInks() {
    // The paper's own, what peers may store, then ours.
    std::vector<QString> stored{{}, u"#ffffff"_qs, u"#000000"_qs, u"#ffee88"_qs, u"#777777"_qs, u"glow"_qs};
    for (const auto& ink : textInks) stored.push_back(QString::fromLatin1(ink.stored));
    for (const auto& tone : inkTones) stored.push_back(QString::fromLatin1(tone.name));
    return stored;
}

TEST(NoteLooks, EveryInkCanBeReadOnEveryPaperByDayAndByLamp) {
    for (const auto light : lights) {
        const InLight painted{light};
        for (const auto name : notePapers) {
            for (const double fade : {0.0, 0.5, 1.0}) {
                const auto colours = faded(notePaper(named(name)), fade).colours;
                const auto grounds = groundsOf(colours);
                for (const auto& stored : storedInks()) {
                    EXPECT_GE(contrast(noteInk(stored, colours), grounds), textContrast)
                        << name << ' ' << stored.toStdString() << ' ' << fade << ' ' << InLight::isLamp();
                }
                EXPECT_GE(contrast(linkInkOn(colours), grounds), textContrast) << name;
                EXPECT_GE(contrast(smallInkOn(colours), grounds), textContrast) << name;
                EXPECT_NE(linkInkOn(colours), noteInk({}, colours)) << name;
            }
        }
    }
}

TEST(NoteLooks, PapersDimByLampAndInksLighten) {
    const InLight painted{Appearance::dark};
    for (const auto name : notePapers) {
        const auto lamp = notePaper(named(name)).colours;
        EXPECT_LT(lamp.light.lightnessF(), 0.5F) << name;
        EXPECT_GT(lamp.ink.lightnessF(), 0.8F) << name;
    }
}

TEST(NoteLooks, CardsAndPagesCanBeReadByDayAndByLamp) {
    for (const auto light : lights) {
        const InLight painted{light};
        const std::array grounds{QColor{tint::card}, QColor{tint::cardShade}, cardPaper().light};
        for (const QColor& ink : {QColor{tint::ink}, QColor{tint::softInk}, QColor{tint::coralInk},
                                  QColor{tint::mintInk}, QColor{tint::sunInk}}) {
            EXPECT_GE(contrast(ink, grounds), textContrast) << ink.name().toStdString() << InLight::isLamp();
        }
        const auto page = palette(light == Appearance::dark);
        const std::array sheets{page.room, page.surface, page.raised, page.pressed};
        EXPECT_GE(contrast(page.ink, sheets), textContrast);
        EXPECT_GE(contrast(page.softInk, sheets), textContrast);
        EXPECT_GE(contrast(page.onAccent, std::array{page.accent, page.accentPressed}), textContrast);
        EXPECT_GE(contrast(page.accent, std::array{page.surface, page.raised}), textContrast);
    }
}

TEST(NoteLooks, DoodlesAreSeenOnEveryBackgroundByDayAndByLamp) {
    for (const bool isDark : {false, true}) {
        for (const auto background : backgrounds) {
            const auto [light, base, deep] = toneOf(background, isDark);
            const std::array grounds{light, base, deep};
            for (const auto& tone : inkTones) {
                const auto ink = contrast(QColor::fromRgba(tone.shown(isDark)), grounds);
                const auto rim = isDark || tone.rim == 0 ? 0 : contrast(QColor::fromRgba(tone.rim), grounds);
                EXPECT_GE(std::max(ink, rim), lineContrast) << tone.name << ' ' << nameOf(background) << isDark;
            }
        }
    }
}

TEST(NoteLooks, EveryPinAndTapeLooksLikeItselfAndAnUnknownOneLikeBrass) {
    const auto painted = [](const QString& name) {
        QImage picture{120, 60, QImage::Format_ARGB32_Premultiplied};
        picture.fill(Qt::transparent);
        QPainter painter{&picture};
        painter.translate(0, 20);
        paintHolder(painter, {120, 120}, name, notePaper({}).colours);
        painter.end();
        return QByteArray{reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()};
    };
    std::set<QByteArray> seen;
    for (const auto pin : notePins) EXPECT_TRUE(seen.insert(painted(named(pin))).second) << pin;
    EXPECT_EQ(painted(u"staple"_qs), painted(u"brass"_qs));
    EXPECT_EQ(notePaper(u"velvet"_qs).colours.base, notePaper(u"butter"_qs).colours.base);
}

} // namespace
} // namespace lumaro
