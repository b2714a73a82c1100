// SPDX-License-Identifier: Apache-2.0
// Asks where the computer is, for the test of the portal, and prints the answer: its access, and the position if there
// is one; "nothing" when none came within the seconds of the first argument. The second may be "block".
#include "Platform/Linux/SystemPosition.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

int main(int argc, char** argv) {
    using namespace lumaro;
    const QCoreApplication application{argc, argv};
    const auto arguments = QCoreApplication::arguments();
    const auto precision =
        arguments.value(2) == QStringLiteral("block") ? HerePrecision::block : HerePrecision::neighbourhood;
    SystemPosition positions;
    std::unique_ptr<PositionSource::Search> search;
    // A moment later, when what is given back has left this process.
    const auto end = [&] {
        search.reset();
        QTimer::singleShot(100, [] { QCoreApplication::quit(); });
    };
    search = positions.search(precision, [&](PositionSource::Answer answer) {
        std::printf("%s", std::string{namesOf(answer.access).at(std::to_underlying(answer.access))}.c_str());
        if (answer.position) std::printf(" %.4f %.4f", answer.position->latitude, answer.position->longitude);
        end();
    });
    QTimer::singleShot(arguments.value(1).toInt() * 1000, [&] {
        if (!search) return;
        std::printf("nothing");
        end();
    });
    return QCoreApplication::exec();
}
