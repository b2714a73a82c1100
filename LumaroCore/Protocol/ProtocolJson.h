// SPDX-License-Identifier: Apache-2.0
#pragma once

// How the values of the protocol are read and written, for the files that give JSON to what holds them. Those with
// `fields()` need nothing more.

#include "LumaroCore/Protocol/Partners.h"
#include "LumaroCore/Protocol/ServerErrorCode.h"
#include "LumaroCore/Support/JsonRead.h"
#include "LumaroCore/Support/JsonWriter.h"

namespace lumaro {

bool readJson(JsonReader& reader, JsonValue value, PartnerSet& out);
void writeJson(JsonWriter& writer, const PartnerSet& partners);
bool readJson(JsonReader& reader, JsonValue value, ServerErrorCode& out);
void writeJson(JsonWriter& writer, const ServerErrorCode& code);

} // namespace lumaro
