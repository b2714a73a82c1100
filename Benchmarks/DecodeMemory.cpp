// SPDX-License-Identifier: Apache-2.0
// What reading a board takes in memory, beside its text:
//   lumaro_decode_memory typical >board.json; lumaro_decode_memory <board.json
// "allocated" is the peak of all blocks asked for during the call; "touched" is how far the process really grew, as the
// JSON library asks for its index by the size of the text and then uses as much as the text has tokens.
#include "LumaroCore/Support/Wire.h"
#include "Samples/Samples.h"

#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

namespace {

std::size_t held = 0;
std::size_t peak = 0;

void* counted(std::size_t size) {
    void* block = std::malloc(size);
    if (block == nullptr) throw std::bad_alloc{};
    held += malloc_usable_size(block);
    peak = std::max(peak, held);
    return block;
}

void uncounted(void* block) {
    held -= malloc_usable_size(block);
    std::free(block);
}

long maxResidentBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024;
}

int measure() {
    const std::string text{std::istreambuf_iterator<char>{std::cin}, {}};
    // The first call of all brings in code and tables; it reads an empty board.
    static_cast<void>(lumaro::Wire::decode<lumaro::Board>(R"({"background":"sage","updatedAt":1,"items":[]})"));
    const auto heldBefore = held;
    peak = held;
    const auto residentBefore = maxResidentBytes();
    const auto board = lumaro::Wire::decode<lumaro::Board>(text);
    const auto resident = maxResidentBytes() - residentBefore;
    if (!board) {
        std::cerr << board.error().path << ": " << board.error().message << "\n";
        return 1;
    }
    const auto times = [&](double bytes) { return bytes / static_cast<double>(text.size()); };
    std::printf("text %zu bytes; allocated %.2f times, touched %.2f times, kept by the board %.2f times\n", text.size(),
                times(static_cast<double>(peak - heldBefore)), times(static_cast<double>(resident)),
                times(static_cast<double>(held - heldBefore)));
    return 0;
}

} // namespace

void* operator new(std::size_t size) {
    return counted(size);
}
void* operator new[](std::size_t size) {
    return counted(size);
}
void operator delete(void* block) noexcept {
    uncounted(block);
}
void operator delete[](void* block) noexcept {
    uncounted(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
    uncounted(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
    uncounted(block);
}

int main(int argc, char** argv) {
    if (argc < 2) return measure();
    const std::string_view name{argv[1]};
    const auto board = name == "heavy" ? lumaro::samples::heavyBoard() : lumaro::samples::typicalBoard();
    std::cout << lumaro::Wire::encode(board).value();
    return 0;
}
