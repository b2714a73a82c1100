// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/ScriptValue.h"

#include "LumaroCore/Support/JsonNumber.h"
#include "LumaroCore/Support/Overloaded.h"

#include <array>
#include <charconv>
#include <cmath>

namespace lumaro {
namespace {

std::optional<double> decimal(const std::string& text) {
    double number = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    return code == std::errc{} && end == text.data() + text.size() ? std::optional{number} : std::nullopt;
}

std::string shortest(double number) {
    std::array<char, maxDoubleText> text{};
    const auto [end, code] = std::to_chars(text.data(), text.data() + text.size(), number);
    return code == std::errc{} ? std::string{text.data(), end} : std::string{};
}

} // namespace

std::optional<std::string> ScriptValue::stringValue() const {
    const auto* const text = std::get_if<std::string>(&value);
    return text == nullptr ? std::nullopt : std::optional{*text};
}

std::optional<double> ScriptValue::doubleValue() const {
    using Number = std::optional<double>;
    return std::visit(Overloaded{[](const Missing&) { return Number{}; }, [](const List&) { return Number{}; },
                                 [](const std::string& text) { return decimal(text); },
                                 [](double number) { return Number{number}; },
                                 [](bool isTrue) { return Number{isTrue ? 1.0 : 0.0}; }},
                      value);
}

std::optional<std::string> ScriptValue::text() const {
    using Text = std::optional<std::string>;
    return std::visit(Overloaded{[](const Missing&) { return Text{}; }, [](const List&) { return Text{}; },
                                 [](const std::string& text) { return Text{text}; },
                                 [](double number) { return Text{shortest(number)}; },
                                 [](bool isTrue) { return Text{isTrue ? "true" : "false"}; }},
                      value);
}

} // namespace lumaro
