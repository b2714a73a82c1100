// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace lumaro {

/// Faults that are planted in the code so that the simulation can show that it finds them, each in one line:
/// `if (!mutant(Mutant::x))`. Only builds with `LUMARO_MUTANTS` have them; in every other, `mutant` is always false.
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
    musicOutlivesConsent,
    placeOutlivesConsent,
    finePositionsTravel,
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
