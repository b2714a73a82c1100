// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/CommandLine.h"

#include <iostream>

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    return lumaro::runCommandLine({argv, static_cast<std::size_t>(argc)}, std::cin, std::cout, std::cerr);
}
