// SPDX-License-Identifier: Apache-2.0
#include "Fuzz/Fuzz.h"
#include "LumaroCore/NoteRender/PMNode.h"

using namespace lumaro;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = fuzz::textOf(data, size);
    if (const auto note = fuzz::roundTrip<PMNode>(text)) {
        fuzz::require(note->plainText().size() <= size, "a note's text is longer than its JSON");
    }
    return 0;
}
