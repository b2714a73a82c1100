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

namespace lumaro {
namespace {

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
std::string namesIn() {
    std::string all;
    for (const auto name : namesOf(Enum{})) all += (all.empty() ? "" : ", ") + std::string{name};
    return all;
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
    const auto sheet = date.isValid() && arguments.density > 0 && arguments.density <= 3
                           ? windowSheet(arguments.city, day, arguments.density)
                           : std::nullopt;
    if (!sheet) {
        std::cerr << "lumaro-offline: a sheet needs a day and one of the cities " << sheetCities() << '\n';
        return EXIT_FAILURE;
    }
    return sheet->save(qText(std::string_view{arguments.sheet})) ? EXIT_SUCCESS : EXIT_FAILURE;
}

int run(QApplication& application, const Arguments& arguments) {
    const auto scene = fromName<Scene>(arguments.scene);
    if (!scene) {
        std::cerr << "lumaro-offline: the scenes are " << namesIn<Scene>() << '\n';
        return EXIT_FAILURE;
    }
    const auto sky = fromName<Sky>(arguments.sky);
    if (!sky && !arguments.sky.empty()) {
        std::cerr << "lumaro-offline: the skies are " << namesIn<Sky>() << '\n';
        return EXIT_FAILURE;
    }
    prepareWindows();
    Rehearsal rehearsal{{.scene = *scene, .sky = sky, .hour = arguments.hour}};
    rehearsal.windows().dress(qText(std::string_view{arguments.appearance}), arguments.isMotionReduced);
    auto* const window = open(rehearsal, arguments);
    if (arguments.doesWeatherMove) window->setProperty("weatherMoves", true);
    QTimer::singleShot(1200, window, [&, window] {
        press(*window, arguments.keys);
        drag(*window, arguments.drag);
    });
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
    app.add_option("--scene", arguments.scene, "what is going on: " + lumaro::namesIn<lumaro::Scene>());
    app.add_option("--sky", arguments.sky, "over the partner's roofs: " + lumaro::namesIn<lumaro::Sky>());
    app.add_option("--hour", arguments.hour, "that the partner's clock strikes")->check(CLI::Range(0, 23));
    app.add_option("--show", arguments.show, "board, desktop, gallery, boardPage, settings or help");
    app.add_option("--appearance", arguments.appearance, "light or dark");
    app.add_flag("--reduced-motion", arguments.isMotionReduced, "fades instead of springs");
    app.add_option("--width", arguments.width, "of the window")->type_name("PX");
    app.add_option("--height", arguments.height, "of the window")->type_name("PX");
    app.add_option("--grab", arguments.grab, "save a picture of the window and end")->type_name("FILE");
    app.add_option("--after", arguments.after, "seconds before the picture")->type_name("S");
    app.add_option("--sheet", arguments.sheet, "paint the windows of a city into a picture and end")->type_name("FILE");
    app.add_option("--city", arguments.city, "of the sheet: " + lumaro::sheetCities());
    app.add_option("--day", arguments.day, "of the sheet")->type_name("YYYY-MM-DD");
    app.add_option("--density", arguments.density, "pixels for a point of the sheet, up to 3");
    app.add_flag("--moving-weather", arguments.doesWeatherMove, "rain and snow fall before the windows");
    app.add_option("--keys", arguments.keys, "to press in the window after a second")->type_name("\"Tab, Space\"");
    app.add_option("--drag", arguments.drag, "drag that over the board: \"words\", or the name of a file");
    CLI11_PARSE(app, argc, argv);
    QApplication application{argc, argv};
    if (!arguments.sheet.empty()) return lumaro::writeSheet(arguments);
    return lumaro::run(application, arguments);
}
