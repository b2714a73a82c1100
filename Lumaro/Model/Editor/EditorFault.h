// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Board/EditableBoard.h"
#include "Lumaro/Model/Editor/UndoStep.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/Geometry/Doodle.h"

#include <string_view>
#include <variant>

namespace lumaro {

/// Why the editor left the board as it is.
using EditorFault = std::variant<ActFault, EditFault, DoodleFault, UndoFault>;

/// What people are told.
std::string_view textOf(const EditorFault& fault);

} // namespace lumaro
