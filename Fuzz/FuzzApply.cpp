// SPDX-License-Identifier: Apache-2.0
#include "Fuzz/Fuzz.h"
#include "LumaroCtl/ApplyVerb.h"

using namespace lumaro;

// Boards with ops, as `lumaroctl apply` reads them. The answer of a request, read as a request without ops, stays.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto answer = applyRequest(fuzz::textOf(data, size), Instant{});
    if (!answer) {
        fuzz::require(answer.error().path.starts_with('$'), "an error has no path");
        return 0;
    }
    auto request = *answer;
    request.back() = ',';
    request.append("\"ops\":[]}");
    const auto again = applyRequest(request, Instant{});
    fuzz::require(again.has_value(), "an answer cannot be read");
    const auto state = [](const std::string& text) { return text.substr(0, text.rfind("\"applied\":[")); };
    const auto later = state(*again);
    fuzz::require(answer->starts_with(later), "a board changed without ops");
    return 0;
}
