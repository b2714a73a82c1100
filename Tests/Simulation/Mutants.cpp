// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/Mutants.h"

#include <algorithm>
#include <array>

namespace lumaro::simulation {
namespace {

constexpr MutantCase inCode(std::string_view name, Mutant which, std::string_view breaks) {
    return {.name = name, .breaks = breaks, .inCode = which};
}

constexpr MutantCase around(std::string_view name, Sabotage which, std::string_view breaks) {
    return {.name = name, .breaks = breaks, .around = which};
}

constexpr std::array cases{
    around("files-not-synced", Sabotage::filesAreNotSynced, "the outbox writes a batch and does not sync it"),
    around("folders-not-synced", Sabotage::foldersAreNotSynced,
           "the outbox names a batch and does not sync its folder"),
    around("ack-before-commit", Sabotage::doneBeforeTheCommit, "the store reports what is not durable yet"),
    around("failure-is-success", Sabotage::failuresReportedAsDone, "the store reports an undone transaction as done"),
    around("no-dedupe", Sabotage::batchesAreForgotten, "the store does not keep the ids of batches"),
    around("tombstones-lost", Sabotage::tombstonesAreForgotten, "a room that is loaded has no tombstones"),
    around("items-by-id", Sabotage::itemsComeByTheirIds, "a room that is loaded has its items in another order"),
    around("versions-not-compared", Sabotage::versionsAreNotCompared, "a commit goes over another node's"),
    around("ids-without-boards", Sabotage::idsOutliveBoards, "a transaction that is undone leaves its batches' ids"),
    around("frames-overtake", Sabotage::framesOvertake, "a line brings what the room says in another order"),
    around("acks-lost", Sabotage::acksAreLost, "the room never acknowledges"),
    around("nothing-resent", Sabotage::nothingIsResent, "a new connection does not send what waits"),
    around("short-memory", Sabotage::sweepsForgetAYear, "the store forgets batches and tombstones within a year"),
    around("thread-forgotten", Sabotage::threadIsForgotten, "the store does not keep the red thread"),
    inCode("welcome-wipes-pending", Mutant::welcomeWipesPending, "a welcome forgets the edits that wait"),
    inCode("welcome-hides-pending", Mutant::welcomeHidesPending, "a welcome takes the edits that wait off the screen"),
    inCode("ack-confirms-nothing", Mutant::ackConfirmsNothing, "an ack does not apply its batch to the room's board"),
    inCode("ack-takes-the-newest", Mutant::ackTakesTheNewest, "an ack settles the newest batch, whatever its id"),
    inCode("delete-by-timestamp", Mutant::deleteByTimestamp, "a delete that is older than its item is refused"),
    inCode("equal-versions-replace", Mutant::equalVersionsReplace, "of two versions of one instant the last one stays"),
    inCode("refused-insert-digs-up", Mutant::refusedInsertDigsUp,
           "an upsert that a full board refuses takes the tombstone"),
    inCode("no-welcome-after-rejection", Mutant::noWelcomeAfterRejection,
           "an author is not put right about refused ops"),
    inCode("no-welcome-after-duplicate", Mutant::noWelcomeAfterDuplicate, "a batch sent again is only acknowledged"),
    inCode("rejected-ops-relayed", Mutant::rejectedOpsRelayed, "the partner is sent what was refused"),
    inCode("effects-before-commit", Mutant::effectsBeforeTheCommit, "the room speaks before its commit is durable"),
    inCode("reload-forgets-inputs", Mutant::reloadForgetsInputs, "a room that is read again drops what was under way"),
    inCode("newest-sent-first", Mutant::newestSentFirst, "what waits is sent again from the end"),
    inCode("ack-leaves-the-window", Mutant::ackLeavesTheWindow, "an ack does not move on what is on the wire"),
    inCode("ack-keeps-the-batch", Mutant::ackKeepsTheBatch, "an acknowledged batch stays in the outbox"),
    inCode("sequences-start-anew", Mutant::sequencesStartAnew, "after a restart the outbox counts from 0 again"),
    inCode("silence-is-patience", Mutant::silenceIsPatience, "a line that says nothing is kept for ever"),
    inCode("backoff-never-ends", Mutant::backoffNeverEnds, "the delay between attempts grows without a cap"),
    inCode("undo-goes-over-others", Mutant::undoGoesOverOthers, "an undo does not look at what others wrote since"),
    inCode("news-ends-drafts", Mutant::newsEndsDrafts, "what the partner takes down falls out of the hand"),
    inCode("reopening-repeats-pending", Mutant::reopeningRepeatsPending, "a new line shows what waits twice"),
    inCode("music-outlives-consent", Mutant::musicOutlivesConsent, "who shares no longer still shows the last song"),
    inCode("place-outlives-consent", Mutant::placeOutlivesConsent,
           "who shares no longer is still shown where they were"),
    inCode("fine-positions-travel", Mutant::finePositionsTravel, "the partner learns the position as it was found"),
    inCode("expiry-waits-for-news", Mutant::expiryWaitsForNews, "a start with nothing new leaves old notes up"),
};

} // namespace

std::span<const MutantCase> allMutants() {
    return cases;
}

const MutantCase* findMutant(std::string_view name) {
    const auto found = std::ranges::find(cases, name, &MutantCase::name);
    return found == cases.end() ? nullptr : &*found;
}

} // namespace lumaro::simulation
