// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/LoadRun.h"

#include <iostream>

int main(int argc, char** argv) {
    const auto options = lumaro::parseOptions({argv, static_cast<std::size_t>(argc)});
    if (!options) {
        (options.error().status == 0 ? std::cout : std::cerr) << options.error().text;
        return options.error().status;
    }
    const auto report = lumaro::runLoad(*options);
    if (!report) {
        std::cerr << "lumaro-load: " << report.error() << '\n';
        return 3;
    }
    std::cout << (options->isJson ? lumaro::jsonOf(*report) + '\n' : lumaro::linesOf(*report));
    return report->violations.empty() ? 0 : 1;
}
