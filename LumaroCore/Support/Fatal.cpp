// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace lumaro {

void fatal(std::string_view what, std::source_location where) {
    static_cast<void>(std::fprintf(stderr, "%s:%u: %.*s\n", where.file_name(), static_cast<unsigned>(where.line()),
                                   static_cast<int>(what.size()), what.data()));
    std::abort();
}

} // namespace lumaro
