// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Pairing/Secrets.h"

#include "LumaroCore/Support/Fatal.h"

#include <openssl/evp.h>

#include <array>
#include <vector>

namespace lumaro {

std::string randomText(RandomSource& random, std::size_t length) {
    constexpr std::string_view alphabet = "abcdefghijklmnopqrstuvwxyz234567";
    std::vector<std::uint8_t> bytes(length);
    random.fill(bytes);
    std::string text;
    for (const auto byte : bytes) text.push_back(alphabet[byte % alphabet.size()]); // 32 divides 256: all are as likely
    return text;
}

std::string randomCode(RandomSource& random) {
    constexpr std::uint32_t codes = 1'000'000;
    // Three bytes hold each code 16 times; what is left above is drawn again.
    constexpr std::uint32_t end = (1U << 24U) / codes * codes;
    std::uint32_t drawn = end;
    while (drawn >= end) {
        std::array<std::uint8_t, 3> bytes{};
        random.fill(bytes);
        drawn = std::uint32_t{bytes[0]} << 16U | std::uint32_t{bytes[1]} << 8U | bytes[2];
    }
    return std::to_string(codes + drawn % codes).substr(1);
}

std::array<std::uint8_t, 32> sha256(std::string_view bytes) {
    std::array<std::uint8_t, 32> digest{};
    if (EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1) {
        fatal("the cryptography library has no SHA-256");
    }
    return digest;
}

} // namespace lumaro
