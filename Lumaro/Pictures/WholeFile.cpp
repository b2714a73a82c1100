// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/WholeFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <string>

namespace lumaro {
namespace {

using namespace std::string_view_literals;

constexpr auto pngStart = "\x89PNG\r\n\x1a\n"sv;

// A file from front to back. Past its end everything is 0, and `isPast` says so.
class Parts {
public:
    explicit Parts(std::string_view file, std::size_t place = 0) : file_(file), place_(place) {}

    bool isPast() const { return place_ > file_.size(); }
    std::size_t place() const { return place_; }
    void skip(std::uint64_t count) {
        place_ = count > file_.size() ? file_.size() + 1 : std::min(place_ + std::size_t{count}, file_.size() + 1);
    }
    std::uint8_t byte() {
        const std::uint8_t read = place_ < file_.size() ? static_cast<std::uint8_t>(file_[place_]) : std::uint8_t{};
        skip(1);
        return read;
    }
    std::uint64_t bigEndian(int bytes) {
        std::uint64_t number = 0;
        for (int i = 0; i < bytes; ++i) number = number << 8 | byte();
        return number;
    }
    std::uint32_t littleEndian(int bytes) {
        std::uint32_t number = 0;
        for (int i = 0; i < bytes; ++i) number |= std::uint32_t{byte()} << (8 * i);
        return number;
    }
    std::string_view text(std::size_t count) {
        const auto read = place_ < file_.size() ? file_.substr(place_, count) : std::string_view{};
        skip(count);
        return read;
    }
    /// To behind the next byte of that value, or past the end.
    void skipBehind(char value) {
        const auto found = place_ < file_.size() ? file_.find(value, place_) : std::string_view::npos;
        place_ = found == std::string_view::npos ? file_.size() + 1 : found + 1;
    }

private:
    std::string_view file_;
    std::size_t place_;
};

bool isFrame(std::uint8_t marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// Stands alone, without a length behind it: stuffing, a restart, a start.
bool isBare(std::uint8_t marker) {
    return marker == 0x00 || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

// The next marker; 0 past the end. What lies between two is the pixels, or nobody's.
std::uint8_t nextMarker(Parts& parts) {
    for (;;) {
        parts.skipBehind('\xFF');
        std::uint8_t marker = parts.byte();
        while (marker == 0xFF) marker = parts.byte();
        if (parts.isPast()) return 0;
        if (!isBare(marker)) return marker;
    }
}

bool isWholeJpeg(std::string_view file) {
    Parts parts{file, 2};
    while (const auto marker = nextMarker(parts)) {
        if (marker == 0xD9) return true;
        const auto length = parts.bigEndian(2);
        parts.skip(std::max<std::uint64_t>(length, 2) - 2);
    }
    return false;
}

bool isWholePng(std::string_view file) {
    Parts parts{file, pngStart.size()};
    while (!parts.isPast()) {
        const auto length = parts.bigEndian(4);
        const auto name = parts.text(4);
        parts.skip(length + 4);
        if (name == "IEND") return !parts.isPast();
    }
    return false;
}

void skipColours(Parts& parts, std::uint8_t flags) {
    if ((flags & 0x80) != 0) parts.skip(std::uint64_t{3} << ((flags & 7) + 1));
}

void skipBlocks(Parts& parts) {
    while (const auto length = parts.byte()) parts.skip(length);
}

// To the end of the first picture: what moves after it is not shown.
bool isWholeGif(std::string_view file) {
    Parts parts{file, 10};
    const auto flags = parts.byte();
    parts.skip(2);
    skipColours(parts, flags);
    while (!parts.isPast()) {
        const auto kind = parts.byte();
        if (kind == 0x2C) {
            parts.skip(8);
            skipColours(parts, parts.byte());
            parts.skip(1);
            skipBlocks(parts);
            return !parts.isPast();
        }
        if (kind != 0x21) return false;
        parts.skip(1);
        skipBlocks(parts);
    }
    return false;
}

bool isWholeWebp(std::string_view file) {
    return file.size() >= Parts{file, 4}.littleEndian(4) + std::size_t{8};
}

bool isWholeBmp(std::string_view file) {
    const std::uint64_t pixelsAt = Parts{file, 10}.littleEndian(4);
    const auto width = static_cast<std::int32_t>(Parts{file, 18}.littleEndian(4));
    const auto height = static_cast<std::int32_t>(Parts{file, 22}.littleEndian(4));
    const std::uint64_t bits = Parts{file, 28}.littleEndian(2);
    const auto packing = Parts{file, 30}.littleEndian(4);
    const bool isPacked = packing == 1 || packing == 2;
    if (isPacked || width <= 0) return file.size() >= Parts{file, 2}.littleEndian(4);
    const std::uint64_t row = (static_cast<std::uint64_t>(width) * bits + 31) / 32 * 4;
    return file.size() >= pixelsAt + row * static_cast<std::uint64_t>(std::abs(std::int64_t{height}));
}

bool isWholeHeif(std::string_view file) {
    Parts parts{file};
    while (parts.place() < file.size()) {
        auto length = parts.bigEndian(4);
        parts.skip(4);
        std::uint64_t head = 8;
        if (length == 1) {
            length = parts.bigEndian(8);
            head = 16;
        }
        if (length == 0) return true; // to the end, wherever that is
        if (length < head) return false;
        parts.skip(length - head);
    }
    return !parts.isPast();
}

} // namespace

bool isWhole(std::string_view file) {
    if (file.starts_with("\xFF\xD8")) return isWholeJpeg(file);
    if (file.starts_with(pngStart)) return isWholePng(file);
    if (file.starts_with("GIF8")) return isWholeGif(file);
    if (file.starts_with("RIFF") && file.size() >= 12 && file.substr(8, 4) == "WEBP") return isWholeWebp(file);
    if (file.starts_with("BM")) return isWholeBmp(file);
    return !isHeif(file) || isWholeHeif(file);
}

std::optional<JpegFrame> jpegFrame(std::string_view file) {
    if (!file.starts_with("\xFF\xD8")) return std::nullopt;
    Parts parts{file, 2};
    while (const auto marker = nextMarker(parts)) {
        if (marker == 0xD9 || marker == 0xDA) break;
        Parts inside = parts;
        parts.skip(std::max<std::uint64_t>(parts.bigEndian(2), 2) - 2);
        if (!isFrame(marker)) continue;
        inside.skip(3);
        JpegFrame frame;
        frame.height = static_cast<int>(inside.bigEndian(2));
        frame.width = static_cast<int>(inside.bigEndian(2));
        frame.isProgressive = marker == 0xC2 || marker == 0xC6 || marker == 0xCA || marker == 0xCE;
        int samples = 0;
        int most = 1;
        for (int left = std::min<int>(inside.byte(), 4); left > 0; --left) {
            inside.skip(1);
            const int sampling = inside.byte();
            inside.skip(1);
            samples += (sampling >> 4) * (sampling & 15);
            most = std::max(most, (sampling >> 4) * (sampling & 15));
        }
        frame.samplesPerPixel = double(std::max(samples, 1)) / most;
        return frame;
    }
    return std::nullopt;
}

bool isPngByRows(std::string_view file) {
    return file.starts_with(pngStart) && file.size() > 28 && file[24] == 8 && (file[25] == 2 || file[25] == 6) &&
           file[28] == 0;
}

bool isHeif(std::string_view file) {
    constexpr std::array brands{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv,
                                "hevx"sv, "mif1"sv, "msf1"sv, "avif"sv, "avis"sv};
    return file.size() >= 12 && file.substr(4, 4) == "ftyp" &&
           std::ranges::find(brands, file.substr(8, 4)) != brands.end();
}

} // namespace lumaro
