// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace lumaro {

/// Faults that the simulation must find: each is one line in the code, and stands in
/// builds for tests alone.
enum class Mutant : std::uint8_t {
    none,
    welcomeWipesPending,
    welcomeHidesPending,
    ackConfirmsNothing,
    ackTakesTheNewest,
    deleteByTimestamp,
    equalVersionsReplace,
    refusedInsertDigsUp,
    noWelcomeAfterRejection,
    noWelcomeAfterDuplicate,
    rejectedOpsRelayed,
    effectsBeforeTheCommit,
    reloadForgetsInputs,
    newestSentFirst,
    ackLeavesTheWindow,
    ackKeepsTheBatch,
    sequencesStartAnew,
    silenceIsPatience,
    backoffNeverEnds,
    undoGoesOverOthers,
    newsEndsDrafts,
    reopeningRepeatsPending,
    expiryWaitsForNews,
    count,
};

#ifdef LUMARO_MUTANTS
/// The fault that this process has now.
inline Mutant activeMutant = Mutant::none;
inline bool mutant(Mutant which) {
    return activeMutant == which;
}
#else
constexpr bool mutant(Mutant /*which*/) {
    return false;
}
#endif

} // namespace lumaro
