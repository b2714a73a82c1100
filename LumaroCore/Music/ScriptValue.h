// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace lumaro {

/// What a script answers.
struct ScriptValue {
    /// The script's missing value, or null.
    struct Missing {
        bool operator==(const Missing&) const = default;
    };
    using List = std::vector<ScriptValue>;

    std::variant<Missing, std::string, double, bool, List> value;

    /// A text; of other values none.
    std::optional<std::string> stringValue() const;
    /// A number as it is, a boolean as 1 or 0, a text that is a decimal number; of others none. It may be infinite or
    /// no number at all: players say such things.
    std::optional<double> doubleValue() const;
    /// A text as it is, a number in its shortest decimal form, a boolean as "true" or "false"; of others none.
    std::optional<std::string> text() const;

    bool operator==(const ScriptValue&) const = default;
};

} // namespace lumaro
