// SPDX-License-Identifier: Apache-2.0
#pragma once

// How items, boards and ops are read and written, for the files that give JSON to what holds them.

#include "LumaroCore/BoardModel/Op.h"
#include "LumaroCore/Support/JsonRead.h"
#include "LumaroCore/Support/JsonWriter.h"

#include <optional>
#include <vector>

namespace lumaro {

/// An item of a kind this version does not know is an error.
bool readJson(JsonReader& reader, JsonValue value, BoardItem& out);
/// A list of items leaves out those of kinds this version does not know, whatever else they hold.
bool readJson(JsonReader& reader, JsonValue value, std::vector<BoardItem>& out);
bool readJson(JsonReader& reader, JsonValue value, Board& out);
bool readJson(JsonReader& reader, JsonValue value, Op& out);
/// An unknown "op" is an error.
bool readJson(JsonReader& reader, JsonValue value, ForwardCompatibleOp& out);
/// An op from a room that may be newer: none where its "op" or the kind of its item is unknown to this version.
bool readOpFromRoom(JsonReader& reader, JsonValue value, std::optional<Op>& out);

void writeJson(JsonWriter& writer, const BoardItem& item);
void writeJson(JsonWriter& writer, const Board& board);
void writeJson(JsonWriter& writer, const Op& op);

} // namespace lumaro
