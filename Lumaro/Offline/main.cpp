// SPDX-License-Identifier: Apache-2.0
// The real windows over a computer that is not there, for people who work on the look.
#include "Lumaro/Offline/PlayedHands.h"
#include "Lumaro/Offline/Rehearsal.h"
#include "Lumaro/Offline/WindowSheet.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"

#include <CLI/CLI.hpp>
#include <QtCore/QDate>
#include <QtCore/QTimer>
#include <QtQuick/QQuickView>
#include <QtWidgets/QApplication>

#include <chrono>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

// Of a window: a picture of it is held in memory as a whole.
constexpr int widest = 16'384;

struct Arguments {
    std::string scene = "together";
    std::string show = "board";
    std::string sky;
    std::optional<int> hour;
    std::string appearance = "light";
    bool isMotionReduced = false;
    int width = 1280;
    int height = 800;
    std::string grab;
    double after = 2;
    std::string sheet;
    std::string city = "lisbon";
    std::string day = "2026-06-21";
    double density = 1;
    bool doesWeatherMove = false;
    std::string keys;
    std::string drag;
};

template <class Enum>
CLI::IsMember oneOf() {
    std::vector<std::string> names;
    for (const auto name : namesOf(Enum{})) names.emplace_back(name);
    return CLI::IsMember{names};
}

CLI::IsMember oneOf(std::vector<std::string> names) {
    return CLI::IsMember{std::move(names)};
}

std::string checkDay(const std::string& text) {
    const bool isDay = QDate::fromString(qText(std::string_view{text}), Qt::ISODate).isValid();
    return isDay ? std::string{} : "\"" + text + "\" is no day like 2026-06-21";
}

QQuickWindow* openGallery(Rehearsal& rehearsal, const Arguments& arguments) {
    auto* const view = new QQuickView{&rehearsal.windows().engine(), nullptr};
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->setSource(QUrl{QStringLiteral("qrc:/qt/qml/DesignSystem/Gallery/Gallery.qml")});
    view->resize(arguments.width, arguments.height);
    view->show();
    return view;
}

/// The window that was asked for, with its scene playing.
QQuickWindow* open(Rehearsal& rehearsal, const Arguments& arguments) {
    if (arguments.show == "gallery") return openGallery(rehearsal, arguments);
    rehearsal.open();
    auto* const window = rehearsal.windows().boardWindow();
    if (arguments.show == "desktop") {
        auto desktop = rehearsal.windows().makeDesktopWindow();
        desktop->resize(arguments.width, arguments.height);
        desktop->show();
        window->hide();
        return desktop.release();
    }
    window->resize(arguments.width, arguments.height);
    if (arguments.show != "board") {
        QTimer::singleShot(1000, window, [window, page = qText(std::string_view{arguments.show})] {
            QMetaObject::invokeMethod(window, "showPage", Q_ARG(QString, page));
        });
    }
    return window;
}

/// The sheet of a city's windows into a file.
int writeSheet(const Arguments& arguments) {
    const auto date = QDate::fromString(qText(std::string_view{arguments.day}), Qt::ISODate);
    const std::chrono::year_month_day day{std::chrono::year{date.year()},
                                          std::chrono::month{static_cast<unsigned>(date.month())},
                                          std::chrono::day{static_cast<unsigned>(date.day())}};
    const auto sheet = windowSheet(arguments.city, day, arguments.density);
    if (sheet && sheet->save(qText(std::string_view{arguments.sheet}))) return EXIT_SUCCESS;
    std::cerr << "lumaro-offline: the sheet cannot be written to " << arguments.sheet << '\n';
    return EXIT_FAILURE;
}

int run(QApplication& application, const Arguments& arguments) {
    const auto scene = fromName<Scene>(arguments.scene).value_or(Scene::together);
    const auto sky = fromName<Sky>(arguments.sky);
    prepareWindows();
    Rehearsal rehearsal{{.scene = scene, .sky = sky, .hour = arguments.hour}};
    rehearsal.windows().dress(qText(std::string_view{arguments.appearance}), arguments.isMotionReduced);
    auto* const window = open(rehearsal, arguments);
    pressKeys(*window, qText(std::string_view{arguments.keys}));
    if (arguments.doesWeatherMove) window->setProperty("weatherMoves", true);
    QTimer::singleShot(1200, window, [&, window] { drag(*window, arguments.drag); });
    if (!arguments.grab.empty()) {
        QTimer::singleShot(static_cast<int>(arguments.after * 1000), window, [&, window] {
            const bool isSaved = window->grabWindow().save(qText(std::string_view{arguments.grab}));
            QApplication::exit(isSaved ? EXIT_SUCCESS : EXIT_FAILURE);
        });
    }
    return application.exec();
}

} // namespace
} // namespace lumaro

int main(int argc, char** argv) {
    lumaro::Arguments arguments;
    CLI::App app{"The board's windows without a network, a keyring or a partner.", "lumaro-offline"};
    using lumaro::oneOf;
    app.add_option("--scene", arguments.scene, "what is going on")->check(oneOf<lumaro::Scene>());
    app.add_option("--sky", arguments.sky, "over the partner's roofs")->check(oneOf<lumaro::Sky>());
    app.add_option("--hour", arguments.hour, "that the partner's clock strikes")->check(CLI::Range(0, 23));
    app.add_option("--show", arguments.show, "what is shown")
        ->check(oneOf({"board", "desktop", "gallery", "boardPage", "settings", "hanging", "help"}));
    app.add_option("--appearance", arguments.appearance)->check(oneOf({"light", "dark"}));
    app.add_flag("--reduced-motion", arguments.isMotionReduced, "fades instead of springs");
    app.add_option("--width", arguments.width, "of the window, in points")->check(CLI::Range(1, lumaro::widest));
    app.add_option("--height", arguments.height, "of the window, in points")->check(CLI::Range(1, lumaro::widest));
    app.add_option("--grab", arguments.grab, "save a picture of the window and end")->type_name("FILE");
    app.add_option("--after", arguments.after, "seconds before the picture")->check(CLI::Range(0.0, 3600.0));
    app.add_option("--sheet", arguments.sheet, "paint the windows of a city into a picture and end")->type_name("FILE");
    app.add_option("--city", arguments.city, "of the sheet")->check(oneOf(lumaro::sheetCities()));
    app.add_option("--day", arguments.day, "of the sheet")->check(lumaro::checkDay)->type_name("YYYY-MM-DD");
    app.add_option("--density", arguments.density, "pixels for a point of the sheet")->check(CLI::Range(0.1, 3.0));
    app.add_flag("--moving-weather", arguments.doesWeatherMove, "rain and snow fall before the windows");
    app.add_option("--keys", arguments.keys, "to press after a second: Tab, Return, Ctrl+Z")->type_name("KEYS");
    app.add_option("--drag", arguments.drag, "drag that over the board: \"words\", or the name of a file");
    CLI11_PARSE(app, argc, argv);
    QApplication application{argc, argv};
    if (!arguments.sheet.empty()) return lumaro::writeSheet(arguments);
    return lumaro::run(application, arguments);
}
