// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Mutant.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace lumaro::simulation {

/// Faults of what stands around the code: the disk, the store, the way to it, the sockets, the settings.
enum class Sabotage : std::uint8_t {
    none,
    filesAreNotSynced,
    foldersAreNotSynced,
    doneBeforeTheCommit,
    failuresReportedAsDone,
    batchesAreForgotten,
    tombstonesAreForgotten,
    itemsComeByTheirIds,
    versionsAreNotCompared,
    idsOutliveBoards,
    framesOvertake,
    acksAreLost,
    nothingIsResent,
    sweepsForgetAYear,
    threadIsForgotten,
};

/// A planted fault: one of the code's, or one around it.
struct MutantCase {
    std::string_view name;
    std::string_view breaks;
    Mutant inCode = Mutant::none;
    Sabotage around = Sabotage::none;
};

std::span<const MutantCase> allMutants();
/// Null when none has this name.
const MutantCase* findMutant(std::string_view name);

} // namespace lumaro::simulation
