// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/InkWidths.h"
#include "Tests/Model/EditorTesting.h"

namespace lumaro {
namespace {

using samples::noon;
using samples::numberedId;

const UUID otherId = numberedId(4);
const UUID windowId = numberedId(5);

/// The small board, with a second note on the right and a window, which keeps its size, below.
Board groupBoard() {
    Board board = smallBoard();
    const auto add = [&](const UUID& id, Point center, Payload payload) {
        auto item = board.items.front();
        item.id = id;
        item.center = center;
        item.payload = std::move(payload);
        item.z = static_cast<std::int64_t>(board.items.size());
        board.items.push_back(std::move(item));
    };
    add(otherId, {900, 500}, samples::plainNote("other"));
    add(windowId, {700, 800}, LocationPayload{PartnerID::b});
    return board;
}

class GroupInHandTest : public testing::Test {
protected:
    Point center(const UUID& id) const { return person_.item(id).center; }
    void partner(const Edits::Result& ops) { person_.partner(ops); }
    const Board& board() const { return person_.fake.board(); }
    std::vector<UUID> members() const { return {group_.members().begin(), group_.members().end()}; }

    Person person_{PartnerID::a, groupBoard()};
    EditorModel& editor_ = person_.editor;
    GroupInHand& group_ = editor_.group();
};

TEST_F(GroupInHandTest, AGestureIsOneActAndOneStepBackAndDoodlesGoAlong) {
    group_.select({noteId, otherId, drawnId});
    EXPECT_EQ(members(), (std::vector{noteId, otherId}));
    EXPECT_FALSE(editor_.inHand().selection());
    const Point middle = group_.frame().middle;
    EXPECT_EQ(middle, (Point{700, 500}));
    EXPECT_TRUE(group_.beginGesture());
    EXPECT_TRUE(group_.moveTo(middle + Point{10, 20}));
    EXPECT_TRUE(group_.turnTo(90));
    EXPECT_EQ(editor_.held().size(), 3U);
    EXPECT_TRUE(group_.endGesture());
    ASSERT_EQ(person_.fake.sent.size(), 1U);
    EXPECT_EQ(person_.fake.sent[0].ops.size(), 3U);
    // They turn about their common middle, as far as the first of them can.
    EXPECT_EQ(person_.item(noteId).rotationDegrees, 15);
    EXPECT_NEAR(distance(center(noteId), {710 - 200 * std::cos(M_PI / 12), 520 - 200 * std::sin(M_PI / 12)}), 0, 1e-6);
    EXPECT_NEAR(distance(center(drawnId), center(noteId)), 100, 1e-6);
    EXPECT_GT(person_.item(noteId).z, person_.item(windowId).z);
    EXPECT_LT(person_.item(drawnId).z, person_.item(otherId).z);
    EXPECT_EQ(members(), (std::vector{noteId, otherId}));
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(look(board()), look(groupBoard()));
}

TEST_F(GroupInHandTest, TheyStopTogetherWhereTheFirstOfThemDoes) {
    ASSERT_TRUE(editor_.carryOut({BoardVerb::Turn{otherId, 10}}));
    ASSERT_TRUE(editor_.carryOut({BoardVerb::Resize{otherId, 1.6}}));
    group_.select({noteId, otherId, windowId});
    EXPECT_TRUE(group_.frame().canResize);
    EXPECT_TRUE(group_.beginGesture());
    EXPECT_TRUE(group_.turnTo(9));
    EXPECT_EQ(group_.frame().tilt, 5);
    EXPECT_TRUE(group_.turnTo(-2.9));
    EXPECT_EQ(group_.frame().tilt, -2);
    EXPECT_TRUE(group_.resizeTo(9));
    EXPECT_DOUBLE_EQ(group_.frame().scale, 1.25);
    EXPECT_TRUE(group_.resizeTo(1.03));
    EXPECT_EQ(group_.frame().scale, 1);
    EXPECT_TRUE(group_.resizeTo(0.1));
    EXPECT_EQ(group_.frame().scale, 0.5);
    EXPECT_TRUE(group_.moveTo({5000, -5000}));
    EXPECT_TRUE(group_.endGesture());
    EXPECT_EQ(person_.item(windowId).scale, 1);
    EXPECT_EQ(person_.item(noteId).scale, 0.5);
    double right = 0;
    double top = 1000;
    for (const auto& id : members()) {
        right = std::max(right, center(id).x);
        top = std::min(top, center(id).y);
    }
    EXPECT_NEAR(right, 1600, 1e-9);
    EXPECT_NEAR(top, 0, 1e-9);
    group_.select({windowId, drawnId});
    EXPECT_TRUE(group_.beginGesture());
    EXPECT_EQ(group_.resizeTo(2).error(), EditorFault{EditFault::cannotResize});
}

TEST_F(GroupInHandTest, OnlyWhatTheHandTouchesIsHeld) {
    group_.select({noteId, otherId, chipId});
    EXPECT_TRUE(group_.beginGesture());
    EXPECT_TRUE(group_.moveTo(group_.frame().middle + Point{100, 0}));
    partner(Edits::turn(board(), noteId, 8, person_.partnerHand()));
    partner(Edits::changeText(board(), otherId, pm::docOfLines("theirs"), person_.partnerHand()));
    partner(Edits::move(board(), noteId, {10, 10}, person_.partnerHand()));
    partner(Edits::takeDown(board(), chipId, person_.partnerHand()));
    EXPECT_EQ(members(), (std::vector{noteId, otherId}));
    EXPECT_TRUE(person_.notices.empty());
    EXPECT_TRUE(group_.endGesture());
    EXPECT_EQ(center(noteId), (Point{600, 500}));
    EXPECT_EQ(person_.item(noteId).rotationDegrees, 8);
    EXPECT_EQ(person_.text(otherId), "theirs");
    EXPECT_EQ(board().find(chipId), nullptr);
    // One that is left alone is selected by itself.
    partner(Edits::lock(board(), otherId, person_.partnerHand()));
    EXPECT_FALSE(group_.isSelected());
    EXPECT_EQ(editor_.inHand().selection(), noteId);
}

TEST_F(GroupInHandTest, ActsOfOneStepAreOneActToo) {
    const auto stacked = [&](Edits::StackEnd end) { return editor_.stackGroup(end).has_value(); };
    group_.select({noteId, otherId});
    EXPECT_TRUE(stacked(Edits::StackEnd::back));
    EXPECT_TRUE(stacked(Edits::StackEnd::back));
    EXPECT_EQ(person_.fake.sent.size(), 1U);
    EXPECT_LT(person_.item(otherId).z, person_.item(chipId).z);
    EXPECT_TRUE(editor_.duplicateGroup());
    EXPECT_EQ(person_.fake.sent.size(), 2U);
    EXPECT_EQ(board().items.size(), 8U);
    const auto copies = members();
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(center(copies[0]) - center(noteId), center(copies[1]) - center(otherId));
    EXPECT_TRUE(editor_.carryOutOnGroup([](const UUID& id) { return BoardVerb{BoardVerb::TakeDown{id}}; }));
    EXPECT_EQ(board().items.size(), 5U);
    EXPECT_FALSE(group_.isSelected());
    // What the verb does not fit is left out.
    group_.select({noteId, windowId});
    EXPECT_TRUE(editor_.carryOutOnGroup([](const UUID& id) { return BoardVerb{BoardVerb::Unkeep{id}}; }));
    EXPECT_TRUE(person_.item(noteId).expiresAt());
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(look(board()), look(groupBoard()));
}

TEST_F(GroupInHandTest, LockedItemsAreInNoGroupAndInNoHand) {
    group_.select({noteId, otherId, chipId});
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Lock{noteId}}));
    EXPECT_EQ(members(), (std::vector{otherId, chipId}));
    group_.toggle(noteId);
    EXPECT_EQ(person_.notice(), "it's locked — unlock it first");
    EXPECT_EQ(members(), (std::vector{otherId, chipId}));
    auto& hand = editor_.inHand();
    EXPECT_FALSE(hand.beginGesture(noteId) || hand.beginEditing(noteId) || editor_.pen().begin(noteId));
    EXPECT_FALSE(editor_.pen().edit(drawnId) || editor_.giveHeart(noteId));
    const auto copy = editor_.duplicate(noteId);
    EXPECT_FALSE(person_.item(copy.value()).isLocked);
    // The lock is an act as any other.
    EXPECT_TRUE(editor_.undo());
    EXPECT_TRUE(editor_.undo());
    EXPECT_FALSE(person_.item(noteId).isLocked);
}

TEST_F(GroupInHandTest, ALockThatComesWhileSomebodyWritesTakesNoTextFromThem) {
    auto& hand = editor_.inHand();
    EXPECT_TRUE(hand.beginEditing(noteId));
    EXPECT_TRUE(hand.changeText(pm::docOfLines("half a thou")));
    partner(Edits::lock(board(), noteId, person_.partnerHand()));
    EXPECT_TRUE(hand.endEditing());
    EXPECT_EQ(person_.text(noteId), "half a thou");
    EXPECT_TRUE(person_.item(noteId).isLocked);
    // Ink that is under the pen then goes up on the glass.
    EXPECT_TRUE(editor_.pen().begin(otherId));
    EXPECT_TRUE(editor_.pen().down({900, 500}, {"red", 4}));
    partner(Edits::lock(board(), otherId, person_.partnerHand()));
    EXPECT_TRUE(editor_.pen().finish());
    EXPECT_EQ(board().items.back().payload.as<DoodlePayload>()->on, std::nullopt);
}

TEST_F(GroupInHandTest, AHeartIsADoodleOnAFreeCornerAndNoTwoAreAlike) {
    std::vector<BoardItem> hearts;
    for (const auto& id : {noteId, noteId, noteId, noteId, drawnId}) {
        ASSERT_TRUE(editor_.giveHeart(id));
        hearts.push_back(board().items.back());
        const auto& heart = *hearts.back().payload.as<DoodlePayload>();
        EXPECT_EQ(heart.on, id == drawnId ? std::nullopt : std::optional{noteId});
        EXPECT_EQ(heart.strokes.size(), 2U);
        EXPECT_TRUE(isLiveInk(heart.strokes[0].points));
        EXPECT_TRUE(heart.width < 60 && heart.height < 60) << heart.width << " by " << heart.height;
        for (std::size_t i = 0; i + 1 < hearts.size(); ++i) {
            EXPECT_GT(distance(hearts[i].center, hearts.back().center), 60);
            EXPECT_NE(hearts[i].payload, hearts.back().payload);
        }
    }
    EXPECT_FALSE(editor_.inHand().selection());
    for (std::size_t i = 0; i < hearts.size(); ++i) EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(look(board()), look(groupBoard()));
}

} // namespace
} // namespace lumaro
