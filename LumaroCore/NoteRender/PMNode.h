// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Hash.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

namespace lumaro {

/// A JSON value in the free-form attributes of a note document, kept as it came.
/// A whole number that 64 bits hold is an integer however it was written; every other number is a double.
struct PMValue {
    using Array = std::vector<PMValue>;
    using Object = std::map<std::string, PMValue>;

    std::variant<std::string, std::int64_t, double, bool, Array, Object, std::nullptr_t> value = nullptr;

    /// The string of a string value; none for every other kind, with no conversion.
    const std::string* stringValue() const { return std::get_if<std::string>(&value); }

    void hashInto(Hasher& hasher) const { hasher.add(value); }
    bool operator==(const PMValue&) const = default;
};

using PMAttributes = PMValue::Object;

/// An inline mark of a text node. Types this version does not know are kept.
struct PMMark {
    enum class Kind : std::uint8_t { bold, italic, underline, strike, textColor };

    std::string type;
    std::optional<PMAttributes> attrs;

    /// The kind of `type`; none for a type this version does not know.
    std::optional<Kind> kind() const;
    /// The colour of a `textColor` mark as it was stored; none without one, or where it is not a string.
    const std::string* colorHex() const;

    static constexpr auto fields() { return std::tuple{Field{"type", &PMMark::type}, Field{"attrs", &PMMark::attrs}}; }
    bool operator==(const PMMark&) const = default;
};

constexpr std::array<std::string_view, 5> namesOf(PMMark::Kind) {
    return {"bold", "italic", "underline", "strike", "textColor"};
}

/// A node of a note document, in the ProseMirror JSON shape: a `doc` of `paragraph`s of `text`s.
///
/// A tolerant value: nodes, marks and attributes of a newer composer are read and written back without loss. An absent
/// list and an empty one differ. The constructors in `pm` keep the shape; reading does not enforce it.
struct PMNode {
    enum class Kind : std::uint8_t { doc, paragraph, text };

    std::string type;
    std::optional<std::string> text;
    std::optional<PMAttributes> attrs;
    std::optional<std::vector<PMMark>> marks;
    std::optional<std::vector<PMNode>> content;

    /// The kind of `type`; none for a type this version does not know.
    std::optional<Kind> kind() const;
    /// The characters, with a line feed between the children of a `doc`.
    std::string plainText() const;

    static constexpr auto fields() {
        return std::tuple{Field{"type", &PMNode::type}, Field{"text", &PMNode::text}, Field{"attrs", &PMNode::attrs},
                          Field{"marks", &PMNode::marks}, Field{"content", &PMNode::content}};
    }
    bool operator==(const PMNode&) const = default;
};

constexpr std::array<std::string_view, 3> namesOf(PMNode::Kind) {
    return {"doc", "paragraph", "text"};
}

/// Builders of well-formed nodes and marks.
namespace pm {

PMNode text(std::string characters, std::optional<std::vector<PMMark>> marks = std::nullopt);
PMNode paragraph(std::vector<PMNode> content);
PMNode doc(std::vector<PMNode> content);
/// One empty paragraph; a new note starts from it.
const PMNode& emptyDoc();
/// A document of plain text, a paragraph for each line.
PMNode docOfLines(std::string_view lines);

PMMark bold();
PMMark italic();
PMMark underline();
PMMark strike();
/// The colour is stored unchanged.
PMMark textColor(std::string color);

} // namespace pm
} // namespace lumaro
