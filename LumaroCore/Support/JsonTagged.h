// SPDX-License-Identifier: Apache-2.0
#pragma once

// Tagged variants: one flat object whose tag, the string under one key, names the alternative. Each alternative has a
// `static constexpr std::string_view tag` and lists its own fields.

#include "LumaroCore/Support/JsonRead.h"
#include "LumaroCore/Support/JsonWriter.h"

#include <string_view>
#include <utility>
#include <variant>

namespace lumaro {

/// Whether `tag` names an alternative.
template <class... A>
constexpr bool hasAlternative(std::in_place_type_t<std::variant<A...>> /*type*/, std::string_view tag) {
    return ((tag == A::tag) || ...);
}

/// Reads the rest of an opened object into the alternative that `tag` names.
template <class... A>
bool readAlternative(JsonReader& reader, JsonObject& object, std::string_view tagKey, std::string_view tag,
                     std::variant<A...>& out) {
    // Bound as well, so that a second tag is found out.
    const LooseKey tagField{tagKey};
    PassedOver tagValue;
    bool read = false;
    const auto readAs = [&]<class Alternative>(std::in_place_type_t<Alternative>) {
        if (tag != Alternative::tag) return false;
        read = reader.readObject(object, std::tuple_cat(std::tuple{BoundField{tagField, tagValue}},
                                                        bindFields(out.template emplace<Alternative>())));
        return true;
    };
    const bool known = (readAs(std::in_place_type<A>) || ...);
    return known ? read
                 : reader.failUnder(tagKey, DecodeFault::invalidValue, "unknown value \"" + std::string{tag} + "\"");
}

template <class... A>
bool readTagged(JsonReader& reader, JsonValue value, std::string_view tagKey, std::variant<A...>& out) {
    JsonObject object;
    std::string tag;
    return reader.open(value, object) && reader.peekString(object, tagKey, tag) &&
           readAlternative(reader, object, tagKey, tag, out);
}

/// Writes the tag and the fields of the alternative, without the braces around them.
template <class... A>
void writeTaggedFields(JsonWriter& writer, std::string_view tagKey, const std::variant<A...>& value) {
    std::visit(
        [&]<class Alternative>(const Alternative& alternative) {
            writer.freeKey(tagKey);
            writer.plainString(Alternative::tag);
            writeFields(writer, alternative);
        },
        value);
}

} // namespace lumaro
