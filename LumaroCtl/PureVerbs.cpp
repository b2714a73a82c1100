// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/PureVerbs.h"

#include "LumaroCore/BoardLogic/Placing.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/JsonNumber.h"
#include "LumaroCore/Support/JsonWriter.h"
#include "LumaroCore/Support/Wire.h"

#include <array>
#include <utility>

namespace lumaro {
namespace {

// One object on one line, its fields written by `writeBody`. The verbs write only what they have read or reckoned.
template <class WriteBody>
std::string objectText(WriteBody writeBody) {
    std::string text;
    JsonWriter writer{text};
    writer.openObject();
    writeBody(writer);
    writer.closeObject();
    if (!writer.finish()) fatal("an answer cannot be written");
    return text;
}

} // namespace

VerbResult canonicalBoard(std::string_view board) {
    const auto read = Wire::decode<Board>(board);
    if (!read) return std::unexpected(read.error());
    auto text = Wire::encode(*read);
    if (!text) fatal("a board that was read cannot be written");
    return std::move(*text);
}

VerbResult plainNote(std::string_view document) {
    const auto read = Wire::decode<PMNode>(document);
    if (!read) return std::unexpected(read.error());
    return read->plainText();
}

VerbResult pomodoroReading(std::string_view payload, Instant at) {
    const auto timer = Wire::decode<PomodoroPayload>(payload);
    if (!timer) return std::unexpected(timer.error());
    const double remaining = Pomodoro::remaining(*timer, at);
    const auto endsAt = Pomodoro::endsAt(*timer);
    return objectText([&](JsonWriter& writer) {
        writeValueUnderKey(writer, "\"face\":", Pomodoro::face(*timer, at));
        writeValueUnderKey(writer, "\"remaining\":", remaining);
        writeValueUnderKey(writer, "\"progress\":", Pomodoro::progress(*timer, at));
        writer.key("\"endsAt\":");
        if (endsAt) {
            writeJson(writer, *endsAt);
        } else {
            writer.null();
        }
        writer.key("\"shared\":");
        writer.boolean(Pomodoro::isShared(*timer));
        writeValueUnderKey(writer, "\"figure\":", PomodoroFormatting::figure(remaining));
    });
}

VerbResult landingSpot(std::string_view board, Size size) {
    const auto read = Wire::decode<Board>(board);
    if (!read) return std::unexpected(read.error());
    return objectText([&](JsonWriter& writer) { writeFields(writer, BoardLogic::openSpot(size, *read)); });
}

std::string tiltText(const UUID& id) {
    std::array<char, maxDoubleText> text{};
    return {text.data(), writeDouble(text.data(), BoardLogic::seededTilt(id))};
}

} // namespace lumaro
