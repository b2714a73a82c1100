// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/NoteRender/PMNode.h"
#include "LumaroCore/Support/JsonRead.h"
#include "LumaroCore/Support/JsonWriter.h"

namespace lumaro {

bool readJson(JsonReader& reader, JsonValue value, PMNode& out);
void writeJson(JsonWriter& writer, const PMNode& node);

} // namespace lumaro
