// SPDX-License-Identifier: Apache-2.0
#include "Tests/UI/qml/PseudoLanguage.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QAccessible>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

constexpr double slack = 1.5; // points: letters are placed on whole pixels

struct SeenText {
    QString text;
    QRectF place;                ///< of the letters, in the window
    const QObject* on = nullptr; ///< the popup, or what was looked through
};

class TextWalk {
public:
    TextWalk(QQuickItem& root, QStringList own) : own_(std::move(own)) { walk(root, &root); }

    int count() const { return static_cast<int>(seen_.size()); }
    QStringList faults() {
        for (std::size_t one = 0; one < seen_.size(); ++one) {
            for (std::size_t other = one + 1; other < seen_.size(); ++other) {
                const auto shared = seen_[one].place & seen_[other].place;
                if (seen_[one].on == seen_[other].on && shared.width() > slack && shared.height() > 4) {
                    faults_.append(
                        QStringLiteral("one over the other: %1, %2").arg(seen_[one].text, seen_[other].text));
                }
            }
        }
        return faults_;
    }

private:
    void walk(QQuickItem& item, const QObject* on) {
        if (!item.isVisible() || item.opacity() < 0.01) return;
        if (item.inherits("QQuickPopupItem")) on = &item;
        checkSpoken(item);
        if (item.inherits("QQuickText")) checkText(item, on);
        const auto children = item.childItems();
        for (auto* const child : children) walk(*child, on);
    }

    bool isOwn(const QString& text) const {
        return std::ranges::any_of(own_, [&](const QString& pattern) {
            return QRegularExpression{QRegularExpression::anchoredPattern(pattern)}.match(text).hasMatch();
        });
    }

    void checkTranslated(const QString& text, const QString& where) {
        const bool isTranslated = text.startsWith(QLatin1Char{'['}) || text.trimmed().isEmpty();
        if (!isTranslated && !isOwn(text)) faults_.append(where + text);
    }

    void checkSpoken(QQuickItem& item) {
        auto* const node = QAccessible::queryAccessibleInterface(&item);
        if (node == nullptr) return;
        checkTranslated(node->text(QAccessible::Name), QStringLiteral("not translated, spoken: "));
        checkTranslated(node->text(QAccessible::Description), QStringLiteral("not translated, spoken: "));
    }

    void checkText(QQuickItem& item, const QObject* on) {
        const auto text = item.property("text").toString();
        if (text.trimmed().isEmpty()) return;
        checkTranslated(text, QStringLiteral("not translated: "));
        if (isOwn(text)) return;
        const double width = item.property("contentWidth").toDouble();
        const double height = item.property("contentHeight").toDouble();
        if (item.property("truncated").toBool() || width > item.width() + slack || height > item.height() + slack) {
            faults_.append(QStringLiteral("cut off: ") + text);
        }
        const auto alignment = item.property("effectiveHorizontalAlignment").toInt();
        const double free = item.width() - width;
        const double left = alignment == Qt::AlignRight ? free : alignment == Qt::AlignHCenter ? free / 2 : 0;
        const QRectF letters{left, 0, width, height};
        checkPlace(item, letters, text);
        seen_.push_back({text, item.mapRectToScene(letters), on});
    }

    /// It lies on the control, and within whatever cuts off what sticks out.
    void checkPlace(QQuickItem& item, const QRectF& letters, const QString& text) {
        for (auto* on = item.parentItem(); on != nullptr; on = on->parentItem()) {
            const bool cuts = on->clip() || on->parentItem() == nullptr;
            if (!cuts && on->property("background").isNull()) continue;
            const auto place = item.mapRectToItem(on, letters);
            const bool isWide = place.left() < -slack || place.right() > on->width() + slack;
            const bool isHigh = place.top() < -slack || place.bottom() > on->height() + slack;
            // What is above or below can be scrolled to.
            if (isWide || (isHigh && !on->inherits("QQuickFlickable"))) {
                faults_.append(QStringLiteral("sticks out of %1: %2")
                                   .arg(QString::fromLatin1(on->metaObject()->className()), text));
                return;
            }
            if (on->inherits("QQuickFlickable")) return;
        }
    }

    QStringList own_;
    QStringList faults_;
    std::vector<SeenText> seen_;
};

QString accented(QChar letter) {
    static const QString plain = QStringLiteral("aeiouyncAEIOUYNC");
    static const QString dressed = QStringLiteral("áéíöüýñçÁÉÍÖÜÝÑÇ");
    const auto at = plain.indexOf(letter);
    return at < 0 ? QString{letter} : QString{dressed[at]};
}

} // namespace

QString PseudoLanguage::translate(const char* /*context*/, const char* source, const char* /*disambiguation*/,
                                  int /*n*/) const {
    const auto english = QString::fromUtf8(source);
    QString text;
    for (qsizetype i = 0; i < english.size(); ++i) {
        const bool isPlace = i > 0 && english[i - 1] == QLatin1Char{'%'};
        text += isPlace ? QString{english[i]} : accented(english[i]);
    }
    // In words, so that a longer text can be wrapped as in any language.
    const auto more = static_cast<qsizetype>(std::ceil(0.4 * static_cast<double>(english.size())));
    for (qsizetype i = 0; i < more; ++i) text += QLatin1Char{i % 6 == 0 ? ' ' : 'o'};
    return QLatin1Char{'['} + text + QLatin1Char{']'};
}

int textsSeen(QQuickItem& root) {
    return TextWalk{root, {}}.count();
}

QStringList textFaults(QQuickItem& root, const QStringList& own) {
    QAccessible::setActive(true);
    return TextWalk{root, own}.faults();
}

} // namespace lumaro
