// SPDX-License-Identifier: Apache-2.0
#include "Data/Places/PlacesData.h"

// The two formats of object files differ in the name of the section for constants, and in an underscore before names.
#ifdef __MACH__
#define LUMARO_CONSTANTS ".const"
#define LUMARO_BACK ".text"
#define LUMARO_SYMBOL(name) "_" #name
#else
#define LUMARO_CONSTANTS ".pushsection .rodata"
#define LUMARO_BACK ".popsection"
#define LUMARO_SYMBOL(name) #name
#endif

extern "C" {
extern const std::byte lumaroPlacesStart;
extern const std::byte lumaroPlacesEnd;
}

__asm__(LUMARO_CONSTANTS
        "\n"
        ".globl " LUMARO_SYMBOL(lumaroPlacesStart) "\n"
                                                   ".globl " LUMARO_SYMBOL(lumaroPlacesEnd) "\n"
                                                                                            ".balign 16\n" //
        LUMARO_SYMBOL(lumaroPlacesStart) ":\n"
                                         ".incbin \"" LUMARO_PLACES_FILE "\"\n" //
        LUMARO_SYMBOL(lumaroPlacesEnd) ":\n"
                                       ".byte 0\n" //
        LUMARO_BACK "\n");

namespace lumaro {

std::span<const std::byte> placesData() {
    return {&lumaroPlacesStart, &lumaroPlacesEnd};
}

} // namespace lumaro
