// SPDX-License-Identifier: Apache-2.0
#include "LumaroCityView/Drawing.h"
#include "LumaroCityView/Outcome.h"
#include "LumaroCityView/Surroundings.h"
#include "LumaroCore/Support/OneLine.h"
#include "LumaroCore/Support/Wire.h"

#include <QtWidgets/QApplication>

#include <array>
#include <string>

#include <unistd.h>

namespace {

constexpr unsigned secondsToDraw = 30;

// The one line of standard input.
std::string readLine() {
    std::string line;
    std::array<char, 4096> part{};
    while (line.size() <= lumaro::CityRequest::maxBytes && line.find('\n') == std::string::npos) {
        const auto got = ::read(STDIN_FILENO, part.data(), part.size());
        if (got <= 0) break;
        line.append(part.data(), static_cast<std::size_t>(got));
    }
    return line.substr(0, line.find('\n'));
}

// A fault that Qt cannot go on with; before there is a page it is the display.
void onMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*text*/) {
    if (type == QtFatalMsg) end(lumaro::Outcome::noDisplay, "there is no display to draw on");
}

} // namespace

int main(int argc, char* argv[]) {
    using lumaro::Outcome;
    lumaro::keepStreams();
    lumaro::limitTime(secondsToDraw);
    if (argc > 1) end(Outcome::badRequest, "it takes no arguments: a request is one line of JSON on standard input");
    const auto line = readLine();
    if (line.size() > lumaro::CityRequest::maxBytes) end(Outcome::badRequest, "the request is too long");
    const auto request = lumaro::Wire::decode<lumaro::CityRequest>(line);
    if (!request) end(Outcome::badRequest, "the request cannot be read, at " + lumaro::onOneLine(request.error().path));
    lumaro::prepareEnvironment(request->scale);
    qInstallMessageHandler(onMessage);
    const QApplication application{argc, argv};
    const lumaro::Drawing drawing{*request};
    return QApplication::exec();
}
