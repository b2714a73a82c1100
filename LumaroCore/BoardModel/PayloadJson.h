// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"
#include "LumaroCore/Support/JsonRead.h"
#include "LumaroCore/Support/JsonWriter.h"

namespace lumaro {

/// Reads the payload of an item of this kind.
bool readPayload(JsonReader& reader, JsonValue value, ItemKind kind, Payload& out);
void writeJson(JsonWriter& writer, const Payload& payload);

} // namespace lumaro
