// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/BoardCommands.h"

#include "LumaroControl/BoardText.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroCtl/Streams.h"
#include "Tests/SyncClient/SyncFixture.h"

namespace lumaro {
namespace {

using samples::numberedId;
using Verb = decltype(BoardRequest::Verb::value);

class BoardCommandsTest : public SyncFixture, public BoardSession::Listener {
protected:
    BoardCommandsTest() { commands_.emplace(session_, clock_, sleeper_); }

    void received(const ServerMessage& message) override { commands_->received(message); }
    void boardChanged(const Board&, const Board&) override {}
    void stateChanged(const ConnectionState& state) override { commands_->stateChanged(state); }

    /// Nothing until it is answered.
    std::optional<BoardAnswer>& ask(Verb verb, double wait = 5) {
        auto& answer = answers_.emplace_back();
        commands_->execute({{std::move(verb)}, wait}, [&answer](BoardAnswer got) { answer = std::move(got); });
        return answer;
    }
    void goOnline(Board room = {}) {
        session_.client().connect();
        network_.accept();
        say({ServerMessage::Welcome{PartnerID::b, std::move(room), {}, {}, PartnerSet::both()}});
        network_.takeFrames();
    }
    void say(const ServerMessage& message) { network_.say(Wire::encode(message).value()); }
    void ackAll() {
        while (session_.client().pendingCount() > 0) {
            say({ServerMessage::Ack{session_.client().pending().front().batchId}});
        }
    }
    static BoardRequest::PutUp note(std::uint64_t id, std::string text = "hi") {
        return {numberedId(id), {samples::plainNote(std::move(text))}, Point{10, 20}};
    }
    std::size_t items() const { return session_.board().shown().items.size(); }

    BoardSession session_{{"http://127.0.0.1:7700", token_, {}, outbox(), {}, {}}, ports(), ids_, *this};
    std::optional<BoardCommands> commands_;
    std::list<std::optional<BoardAnswer>> answers_;
};

const std::string queued = "queued: it goes out when the room is reachable\n";

TEST_F(BoardCommandsTest, WaitsForTheRoomsBoardAndThenForTheAck) {
    session_.client().connect();
    const auto& put = ask(note(1));
    network_.accept();
    EXPECT_EQ(items(), 0U) << "the room's board is not here yet";
    say({ServerMessage::Welcome{PartnerID::b, {}, {}, {}, PartnerSet::both()}});
    EXPECT_EQ(items(), 1U);
    EXPECT_FALSE(put);
    ackAll();
    EXPECT_EQ(put, (BoardAnswer{0, numberedId(1).lowerString() + "\n", ""}));
    EXPECT_EQ(ask(note(1))->out, numberedId(1).lowerString() + "\n") << "what is asked twice is put up once";
    EXPECT_EQ(session_.client().pendingCount(), 0U);
    EXPECT_FALSE(commands_->isBusy());
}

TEST_F(BoardCommandsTest, WhatIsAskedAgainSharesTheFateOfTheFirst) {
    goOnline();
    const auto& first = ask(note(1));
    const auto& again = ask(note(1));
    EXPECT_FALSE(first || again);
    EXPECT_EQ(session_.client().pendingCount(), 1U);
    network_.end({WebSocketEnd::Closed{}});
    EXPECT_EQ(first->err, queued);
    EXPECT_EQ(again, first);
    ask(BoardRequest::TakeDown{numberedId(1).lowerString()});
    EXPECT_EQ(ask(note(1))->out, first->out);
    EXPECT_EQ(items(), 0U) << "what was taken down since stays down";
}

TEST_F(BoardCommandsTest, ARosterWithoutNamesChangesNone) {
    session_.client().connect();
    network_.accept();
    say({ServerMessage::Welcome{PartnerID::b, {}, {.b = true}, SlotNames{"Ada", {}}, {.b = true}}});
    say({ServerMessage::Roster{PartnerSet::both(), {}, PartnerSet::both()}});
    EXPECT_EQ(session_.names().a, "Ada");
    EXPECT_EQ(session_.online(), PartnerSet::both());
    EXPECT_EQ(session_.paired(), PartnerSet::both());
}

TEST_F(BoardCommandsTest, QueuesAndSaysSoWhereNoAckComes) {
    EXPECT_EQ(ask(note(1))->err, queued) << "nobody was asked to connect";
    goOnline();
    const auto& late = ask(note(2));
    sleeper_.advance(Seconds{4});
    EXPECT_FALSE(late);
    sleeper_.advance(Seconds{1});
    EXPECT_EQ(late, (BoardAnswer{0, numberedId(2).lowerString() + "\n", queued}));
    EXPECT_EQ(ask(note(3), 0)->err, queued);
    const auto& cut = ask(note(4));
    network_.end({WebSocketEnd::Closed{}});
    EXPECT_EQ(cut->err, queued);
    EXPECT_EQ(ask(note(5))->err, queued) << "the next attempt is far";
    EXPECT_EQ(session_.client().pendingCount(), 5U);
}

TEST_F(BoardCommandsTest, TellsWhatTheRoomRefuses) {
    goOnline();
    const auto& complained = ask(note(1));
    say({ServerMessage::Error{{"limit_exceeded"}, "too\nmuch"}});
    ackAll();
    EXPECT_EQ(complained, (BoardAnswer{77, "", "the room: too?much\n"}));
    const auto& refused = ask(note(2));
    say({ServerMessage::Error{{"unauthorized"}, "gone"}});
    EXPECT_EQ(refused->status, 77);
    EXPECT_EQ(refused->err, "The room refused this Mac's token; it has been replaced.\n");
}

TEST_F(BoardCommandsTest, EditsTheItemWhoseIdBeginsSo) {
    Board room;
    for (const char* id : {"aa000000-0000-4000-8000-000000000000", "ab000000-0000-4000-8000-000000000000"}) {
        auto item = samples::typicalBoard().items.front();
        item.id = UUID::parse(id).value();
        item.payload = LocationPayload{PartnerID::a};
        room.items.push_back(item);
    }
    goOnline(room);
    const auto first = [this] { return session_.board().shown().items.front(); };
    ask(BoardRequest::Move{"AA", {30, 2000}});
    EXPECT_EQ(first().center, (Point{30, 1000}));
    ask(BoardRequest::Turn{"aa0", 99});
    EXPECT_EQ(first().rotationDegrees, 15);
    EXPECT_EQ(first().author, PartnerID::b);
    EXPECT_EQ(ask(BoardRequest::TakeDown{"a"})->err, "2 items begin with \"a\"\n");
    EXPECT_EQ(ask(BoardRequest::TakeDown{"x\x1b"})->err, "no item begins with \"x?\"\n");
    EXPECT_EQ(ask(BoardRequest::Resize{"ab", 2})->err, "an item of this kind keeps its size\n");
    ask(BoardRequest::TakeDown{"aa000000-0000-4000-8000-000000000000"});
    ask(BoardRequest::SetBackground{BackgroundID::oat});
    EXPECT_EQ(items(), 1U);
    EXPECT_EQ(session_.board().shown().background, BackgroundID::oat);
    ackAll();
    for (const auto& answer : answers_) EXPECT_EQ(answer->status, answer->err.empty() ? 0 : 65) << answer->err;
}

TEST_F(BoardCommandsTest, StoresNothingThatTheBoardDoesNotTake) {
    goOnline(samples::fullBoard());
    EXPECT_EQ(ask(note(100))->err, "the board is full: it has 60 items\n");
    say({ServerMessage::Welcome{PartnerID::b, {}, {}, {}, PartnerSet::both()}});
    EXPECT_EQ(ask(note(100, std::string(40000, 'x')))->err, "too much for one item: it may have 32768 bytes\n");
    EXPECT_EQ(ask(note(100, "\xff"))->status, 65);
    fault_ = FileFault::noSpace;
    const auto full = ask(note(100));
    EXPECT_EQ(full->status, 74);
    EXPECT_NE(full->err.find("the disk is full"), std::string::npos) << full->err;
    EXPECT_EQ(full->err.find("nothing was changed"), 0U);
    EXPECT_EQ(items(), 0U);
    EXPECT_EQ(session_.client().pendingCount(), 0U);
}

TEST_F(BoardCommandsTest, ShowsTheBoardAndWhatWaits) {
    ask(note(1, "buy\noranges\x1b[2J"), 0);
    const auto id = shortId(numberedId(1));
    EXPECT_EQ(ask(BoardRequest::Show{})->out, "butter, 1 item\n" + id + "  b  10,20  note \"buy oranges?[2J\"\n");
    const auto json = ask(BoardRequest::Show{.json = true})->out;
    EXPECT_EQ(Wire::decode<Board>(json), session_.board().shown());
    EXPECT_NE(ask(BoardRequest::Pending{})->out.find("  " + id + " note"), std::string::npos);
    const auto status = ask(BoardRequest::Status{})->out;
    EXPECT_NE(status.find("you are b (b)\nroom: idle\n1 on the board, 1 waiting for the room\n"), std::string::npos)
        << status;
}

TEST_F(BoardCommandsTest, RequestsAndAnswersTravelUnchanged) {
    const std::vector<Verb> verbs{note(1, "two\nlines"),
                                  BoardRequest::PutUp{numberedId(2), {CountdownPayload{samples::noon, "trip"}}, {}},
                                  BoardRequest::Move{"a", {1, 2}},
                                  BoardRequest::Turn{"b", -3.5},
                                  BoardRequest::Resize{"c", 2},
                                  BoardRequest::TakeDown{"d"},
                                  BoardRequest::Keep{"e"},
                                  BoardRequest::Unkeep{"f"},
                                  BoardRequest::Join{"123456", "Bo", PartnerID::b, true},
                                  BoardRequest::Show{true},
                                  BoardRequest::Pending{},
                                  BoardRequest::SetBackground{BackgroundID::oat},
                                  BoardRequest::Status{}};
    for (const auto& verb : verbs) {
        const BoardRequest request{{verb}, 2.5};
        const auto text = Wire::encode(request).value();
        EXPECT_EQ(text.find('\n'), std::string::npos);
        EXPECT_EQ(Wire::decode<BoardRequest>(text), request) << text;
    }
    const BoardAnswer answer{77, "one\ntwo\n", "\"no\"\n"};
    EXPECT_EQ(Wire::decode<BoardAnswer>(Wire::encode(answer).value()), answer);
}

TEST(BoardText, TakesNoOrdersFromAPeer) {
    EXPECT_EQ(nameOfSlot({{"\x1b]0;x\a"}, {}}, PartnerID::a), "?]0;x?");
    BoardItem item;
    item.payload = samples::plainNote(std::string(59, 'x') + "\xc3\xa9\xc3\xa9");
    EXPECT_EQ(itemText(item), "note \"" + std::string(59, 'x') + "…\"") << "cut between characters";
}

TEST(BoardText, TellsEveryKindOfChangeOnce) {
    Board before;
    for (const char* text : {"one", "two", "three"}) {
        auto& item = before.items.emplace_back();
        item.id = numberedId(before.items.size());
        item.center = {1, 2};
        item.payload = samples::plainNote(text);
    }
    Board after = before;
    after.background = BackgroundID::oat;
    after.threadTiedAt = samples::noon;
    after.items[0].center = {3, 4};
    after.items[1].payload = samples::plainNote("zwei");
    after.items[2].id = numberedId(4);
    EXPECT_EQ(changeLines(before, after, {{"Ann"}, {}}),
              (std::vector<std::string>{"00000000  down: note \"three\"", "00000000  up: note \"three\" at 1,2 by Ann",
                                        "00000000  moved: note \"one\" to 3,4", "00000000  changed: note \"zwei\"",
                                        "background oat", "the red thread is tied"}));
}

} // namespace
} // namespace lumaro
