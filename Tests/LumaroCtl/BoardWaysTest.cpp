// SPDX-License-Identifier: Apache-2.0
// The ways to a board: a person's hands, `lumaroctl`, and `lumaroctl --app`.
#include "LumaroCtl/BoardCommands.h"
#include "Tests/Fakes/FakeNetwork.h"
#include "Tests/LumaroCtl/AskedApplication.h"
#include "Tests/Model/EditorTesting.h"
#include "Tests/Platform/Qt/QtTest.h"

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using Verb = AskedApplication::Verb;

/// `lumaroctl` on a board whose room is out of reach.
class Terminal final : private BoardSession::Listener {
public:
    explicit Terminal(Board board)
        : session_({"http://127.0.0.1:7700",
                    CoupleToken::parse("lm1.abc.a.hush7").value(),
                    {},
                    DurableOutbox::open(disk_, ids_, "/outbox").value(),
                    std::move(board),
                    {}},
                   {network_, http_, sleeper_, clock_, log_}, ids_, *this) {}

    BoardAnswer ask(Verb verb) {
        BoardAnswer answer;
        commands_.execute({{std::move(verb)}, 0}, [&](BoardAnswer got) { answer = std::move(got); });
        return answer;
    }
    const Board& board() const { return session_.board().shown(); }

private:
    void received(const ServerMessage&) override {}
    void boardChanged(const Board&, const Board&) override {}
    void stateChanged(const ConnectionState&) override {}

    MemoryFileSystem disk_;
    CountingUUIDs ids_{2000};
    FakeNetwork network_;
    ScriptedHttpClient http_;
    ManualSleeper sleeper_;
    ManualClock clock_{sleeper_, noon};
    RecordingLog log_;
    BoardSession session_;
    BoardCommands commands_{session_, clock_, sleeper_};
};

const UUID lockedId = samples::numberedId(0xAA);
const std::string noteText = noteId.upperString();
const std::string chipText = chipId.upperString();

NotePayload dayNote(Instant expiresAt) {
    return {pm::docOfLines("buy oranges"), "sky", "brass", expiresAt};
}

Board startingBoard() {
    Board board = smallBoard();
    board.items[0].payload = dayNote(noon + 1h);
    auto& locked = board.items.emplace_back(board.items[2]);
    locked.id = lockedId;
    locked.isLocked = true;
    return board;
}

/// What the hands do; answers what the others ask for to do the same.
using Row = Verb (*)(EditorModel& hands);

Verb putUp(EditorModel& hands, std::optional<Point> at) {
    const auto id = hands.putUp(dayNote(noon), at);
    return BoardRequest::PutUp{id.value(), {dayNote(noon + 20ms)}, at};
}

template <class Turn>
void inHand(EditorModel& hands, const UUID& id, Turn turn) {
    EXPECT_TRUE(hands.inHand().beginGesture(id));
    EXPECT_TRUE(turn());
    EXPECT_TRUE(hands.inHand().endGesture());
}

const Row rows[]{
    [](EditorModel& hands) { return putUp(hands, std::nullopt); },
    [](EditorModel& hands) { return putUp(hands, Point{-5, 400}); },
    [](EditorModel& hands) -> Verb {
        inHand(hands, noteId, [&] { return hands.inHand().moveTo({300, 2000}); });
        return BoardRequest::Move{noteText, {300, 2000}};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::Move{noteId, {300, 200}}}));
        return BoardRequest::Move{noteText, {300, 200}};
    },
    [](EditorModel& hands) -> Verb {
        inHand(hands, noteId, [&] { return hands.inHand().turnTo(6.9); });
        return BoardRequest::Turn{noteText, 6.9};
    },
    [](EditorModel& hands) -> Verb {
        inHand(hands, chipId, [&] { return hands.inHand().turnTo(-90); });
        return BoardRequest::Turn{chipText, -90};
    },
    [](EditorModel& hands) -> Verb {
        inHand(hands, noteId, [&] { return hands.inHand().resizeTo(1.5); });
        return BoardRequest::Resize{noteText, 1.5};
    },
    [](EditorModel& hands) -> Verb {
        inHand(hands, noteId, [&] { return hands.inHand().resizeTo(0.97); });
        return BoardRequest::Resize{noteText, 0.97};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::TakeDown{noteId}}));
        return BoardRequest::TakeDown{noteText};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::ToFront{noteId}}));
        return BoardRequest::ToFront{noteText};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::ToBack{chipId}}));
        return BoardRequest::ToBack{chipText};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::Lock{noteId}}));
        return BoardRequest::Lock{noteText};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::Unlock{lockedId}}));
        return BoardRequest::Unlock{lockedId.upperString()};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::Keep{noteId}}));
        return BoardRequest::Keep{noteText};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::Unkeep{noteId}}));
        return BoardRequest::Unkeep{noteText};
    },
    [](EditorModel& hands) -> Verb {
        EXPECT_TRUE(hands.carryOut({BoardVerb::SetBackground{BackgroundID::oat}}));
        return BoardRequest::SetBackground{BackgroundID::oat};
    },
};

class BoardWays : public QtTest {
protected:
    static BoardAnswer ask(AskedApplication& app, const Verb& verb) {
        const auto& answer = app.ask(verb);
        waitUntil([&] { return answer.has_value(); });
        return answer.value_or(BoardAnswer{});
    }
};

TEST_F(BoardWays, LeadToTheSameBoard) {
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        Person person{PartnerID::a, startingBoard()};
        const Verb verb = row(person.editor);
        EXPECT_NE(look(person.fake.board()), look(startingBoard()));

        Terminal terminal{startingBoard()};
        const auto byTerminal = terminal.ask(verb);
        EXPECT_EQ(byTerminal.status, 0) << byTerminal.err;
        EXPECT_EQ(look(terminal.board()), look(person.fake.board()));

        AskedApplication app;
        app.goOnBoardWith(startingBoard(), noon);
        const auto byApp = ask(app, verb);
        EXPECT_EQ(byApp.status, 0) << byApp.err;
        EXPECT_EQ(byApp.out, byTerminal.out);
        EXPECT_EQ(look(app.app->board()), look(person.fake.board()));
    }
}

TEST_F(BoardWays, GiveANoteItsWholeDay) {
    Terminal terminal{{}};
    const auto id = samples::numberedId(7);
    terminal.ask(BoardRequest::PutUp{id, {dayNote(noon - 20ms)}, {}});
    const auto* const note = terminal.board().find(id);
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->payload.as<NotePayload>()->expiresAt, note->createdAt + 86400s);
}

TEST_F(BoardWays, LeaveALockedItemAsItIs) {
    const auto text = lockedId.lowerString();
    const Verb verbs[]{BoardRequest::Move{text, {1, 1}}, BoardRequest::Turn{text, 8}, BoardRequest::Resize{text, 2},
                       BoardRequest::ToFront{text},      BoardRequest::ToBack{text},  BoardRequest::TakeDown{text}};
    AskedApplication app;
    app.goOnBoardWith(startingBoard(), noon);
    Terminal terminal{startingBoard()};
    for (const auto& verb : verbs) {
        EXPECT_EQ(terminal.ask(verb).status, 65) << verb.value.index();
        EXPECT_EQ(ask(app, verb).status, 65) << verb.value.index();
    }
    EXPECT_EQ(look(terminal.board()), look(startingBoard()));
    EXPECT_EQ(look(app.app->board()), look(startingBoard()));
}

TEST_F(BoardWays, RefuseTheSameItems) {
    AskedApplication app;
    app.goOnBoardWith(startingBoard(), noon);
    Terminal terminal{startingBoard()};
    for (const auto* prefix : {"0", "zz"}) {
        const auto refused = terminal.ask(BoardRequest::TakeDown{prefix});
        EXPECT_EQ(refused.status, 65);
        EXPECT_EQ(ask(app, BoardRequest::TakeDown{prefix}), refused);
    }
}

} // namespace
} // namespace lumaro
