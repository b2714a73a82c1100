// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Contrast.h"
#include "DesignSystem/Tokens.h"
#include "LumaroCore/BoardModel/NoteLook.h"
#include "Widgets/Items/NoteLooks.h"
#include "Widgets/Items/Palette.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>

namespace lumaro {
namespace {

using Print = NotePaper::Print;

struct NamedPaper {
    std::string_view name;
    PaperColours day;
    PaperColours lamp;
    Print print = Print::none;
    bool isTorn = false;
};

// By day dark ink on light paper; by lamplight the paper is dim and the ink light. The order is that of `notePapers`.
const std::array<NamedPaper, notePapers.size()>& papers() {
    static const std::array<NamedPaper, notePapers.size()> all{{
        {"butter",
         {{255, 243, 196}, {252, 231, 160}, {241, 211, 126}, {74, 58, 32}, {235, 160, 142}},
         {{130, 89, 44}, {113, 76, 38}, {90, 60, 31}, {255, 240, 208}, {235, 160, 142}}},
        {"blush",
         {{255, 231, 223}, {250, 211, 200}, {238, 186, 173}, {88, 46, 42}, {164, 196, 168}},
         {{122, 77, 68}, {105, 65, 57}, {84, 51, 45}, {255, 230, 220}, {164, 196, 168}}},
        {"sage",
         {{234, 241, 217}, {214, 226, 190}, {190, 206, 160}, {52, 64, 40}, {243, 205, 128}},
         {{84, 91, 64}, {71, 78, 54}, {56, 62, 43}, {238, 243, 216}, {243, 205, 128}}},
        {"sky",
         {{227, 240, 246}, {201, 224, 236}, {171, 202, 220}, {40, 62, 78}, {240, 168, 146}},
         {{70, 89, 101}, {59, 76, 87}, {46, 60, 70}, {228, 240, 246}, {240, 168, 146}}},
        {"lilac",
         {{240, 230, 246}, {223, 208, 236}, {199, 180, 218}, {64, 48, 80}, {158, 206, 188}},
         {{95, 79, 108}, {81, 67, 93}, {64, 53, 74}, {242, 232, 248}, {158, 206, 188}}},
        {"oat",
         {{251, 244, 231}, {241, 229, 208}, {223, 205, 176}, {70, 55, 40}, {152, 190, 212}},
         {{114, 88, 70}, {98, 75, 59}, {78, 59, 47}, {251, 238, 220}, {152, 190, 212}}},
        {"lined",
         {{255, 252, 244}, {250, 246, 235}, {234, 228, 212}, {46, 52, 78}, {150, 176, 214}},
         {{92, 86, 82}, {79, 74, 70}, {63, 59, 56}, {244, 238, 228}, {150, 176, 214}},
         Print::lines},
        {"squared",
         {{247, 251, 245}, {238, 246, 238}, {219, 230, 220}, {40, 62, 58}, {238, 190, 120}},
         {{76, 88, 84}, {64, 75, 71}, {51, 60, 57}, {232, 242, 234}, {238, 190, 120}},
         Print::squares},
        {"dotted",
         {{255, 244, 235}, {252, 234, 222}, {240, 216, 202}, {84, 50, 40}, {178, 160, 208}},
         {{114, 86, 74}, {98, 73, 62}, {78, 58, 49}, {255, 236, 222}, {178, 160, 208}},
         Print::dots},
        {"kraft",
         {{214, 182, 140}, {203, 169, 126}, {184, 150, 108}, {48, 30, 14}, {244, 232, 208}, 1.5},
         {{112, 74, 46}, {97, 62, 38}, {77, 49, 30}, {253, 230, 200}, {224, 204, 170}, 1.5}},
        {"torn",
         {{255, 253, 247}, {252, 248, 238}, {239, 231, 217}, {62, 54, 46}, {226, 158, 150}},
         {{98, 90, 80}, {85, 77, 68}, {68, 61, 54}, {247, 239, 226}, {226, 158, 150}},
         Print::none,
         true},
    }};
    return all;
}

QColor shown(const TextInk& ink) {
    return QColor::fromRgba(ink.shown(InLight::isLamp()));
}

QColor unadapted(const QString& stored, const QColor& own) {
    for (const auto& ink : textInks) {
        if (stored.compare(QLatin1String{ink.stored}, Qt::CaseInsensitive) == 0) return shown(ink);
    }
    for (const auto& tone : inkTones) {
        if (stored == QLatin1String{tone.name}) return QColor::fromRgba(tone.shown(InLight::isLamp()));
    }
    const QColor named = stored.startsWith(u'#') ? QColor{stored} : QColor{};
    return named.isValid() ? named : own;
}

void ruleSheet(QPainter& painter, QSizeF size, Print print, const PaperColours& colours) {
    const QColor rule = mixed(colours.base, {110, 140, 190}, InLight::isLamp() ? 0.30 : 0.42);
    constexpr double step = 24;
    painter.setPen(QPen{rule, 1});
    if (print == Print::dots) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(mixed(colours.base, colours.tape, 0.55));
        for (double y = step / 2; y < size.height(); y += step) {
            const bool isEven = static_cast<int>(y / step) % 2 == 0;
            for (double x = isEven ? step / 2 : step; x < size.width(); x += step)
                painter.drawEllipse({x, y}, 1.7, 1.7);
        }
        return;
    }
    for (double y = 42; y < size.height(); y += step) painter.drawLine(QPointF{0, y}, QPointF{size.width(), y});
    if (print == Print::lines) {
        painter.setPen(QPen{mixed(colours.base, {206, 96, 84}, 0.45), 1.2});
        painter.drawLine(QPointF{16, 0}, QPointF{16, size.height()});
    } else {
        for (double y = 18; y > 0; y -= step) painter.drawLine(QPointF{0, y}, QPointF{size.width(), y});
        for (double x = step / 2; x < size.width(); x += step) {
            painter.drawLine(QPointF{x, 0}, QPointF{x, size.height()});
        }
    }
}

} // namespace

NotePaper notePaper(const QString& name) {
    const auto& all = papers();
    const auto found = std::ranges::find(all, name.toStdString(), &NamedPaper::name);
    const auto& paper = found == all.end() ? all.front() : *found;
    return {InLight::isLamp() ? paper.lamp : paper.day, paper.print, paper.isTorn};
}

NotePaper faded(NotePaper paper, double fade) {
    const QColor pale = InLight::isLamp() ? QColor{74, 66, 58} : QColor{247, 241, 229};
    auto& colours = paper.colours;
    colours.light = mixed(colours.light, pale, fade * 0.5);
    colours.base = mixed(colours.base, pale, fade * 0.62);
    colours.shade = mixed(colours.shade, pale, fade * 0.5);
    colours.ink = legible(mixed(colours.ink, colours.base, fade * 0.14), groundsOf(colours));
    return paper;
}

std::array<QColor, 3> groundsOf(const PaperColours& paper) {
    return {paper.light, paper.base, paper.shade};
}

QColor noteInk(const QString& stored, const PaperColours& paper) {
    return legible(unadapted(stored, paper.ink), groundsOf(paper));
}

QColor linkInkOn(const PaperColours& paper) {
    return legible(shown(linkInk), groundsOf(paper));
}

QColor smallInkOn(const PaperColours& paper) {
    return legible(mixed(paper.ink, paper.base, 0.30), groundsOf(paper));
}

void paintPrint(QPainter& painter, const QPainterPath& outline, QSizeF size, const NotePaper& paper) {
    if (paper.print == Print::none) return;
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    ruleSheet(painter, size, paper.print, paper.colours);
    painter.restore();
}

} // namespace lumaro
