// SPDX-License-Identifier: Apache-2.0
#include "Tests/Model/EditorTesting.h"

#include <algorithm>
#include <array>
#include <deque>
#include <variant>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::chance;
using samples::pick;

// Two people at one board. The room's messages keep their order and take any time.
class TwoEditors {
public:
    explicit TwoEditors(std::uint64_t seed) : random_(seed), room_(deskBoard()) {}

    void step() {
        const auto who = pick(random_, 0, 1);
        auto& person = people_[who];
        person.advance(std::chrono::milliseconds{pick(random_, 0, 700)});
        const int choice = pick(random_, 0, 19);
        if (choice < 7) {
            act(person);
        } else if (choice < 12) {
            commit(who);
        } else if (choice < 19) {
            deliver(who);
        } else {
            for (int i = pick(random_, 1, 8); i > 0; --i) takeBack(person, who == 0 ? PartnerID::a : PartnerID::b);
        }
    }

    void settle() {
        for (const std::size_t who : {0U, 1U}) {
            people_[who].editor.cancel();
            people_[who].editor.cancelDoodle();
            while (commit(who)) {
            }
        }
        for (const std::size_t who : {0U, 1U}) {
            while (deliver(who)) {
            }
            EXPECT_EQ(people_[who].desk.board().items, room_.items);
            EXPECT_EQ(people_[who].desk.board().background, room_.background);
        }
    }

    int taken = 0;
    int refused = 0;

private:
    using Message = std::variant<UUID, std::vector<Op>, Board>; // an ack, the partner's ops, a welcome

    // Mostly one of a few, so that the two meet.
    UUID anyItem(const Person& person) {
        const auto& items = person.desk.board().items;
        if (items.empty()) return noteId;
        const auto last = std::min(items.size(), std::size_t{chance(random_, 0.8) ? 3U : 60U}) - 1;
        return items[pick(random_, std::size_t{0}, last)].id;
    }
    Point anyPlace() { return {pick(random_, 0, 1600) * 1.0, pick(random_, 0, 1000) * 1.0}; }

    void act(Person& person) {
        auto& editor = person.editor;
        const UUID id = anyItem(person);
        // Faults belong to it: things are gone, or of another kind.
        switch (pick(random_, 0, 12)) {
        case 0: (void)editor.putUp(samples::anyItem(random_, {}).payload); break;
        case 1: (void)editor.takeDown(id); break;
        case 2: (void)editor.duplicate(id); break;
        case 3: (void)editor.setBackground(static_cast<BackgroundID>(pick(random_, 0, 5))); break;
        case 4: (void)(chance(random_, 0.5) ? editor.keep(id) : editor.unkeep(id)); break;
        case 5: (void)editor.beginGesture(id); break;
        case 6: (void)editor.turnTo(pick(random_, -20, 20)); break;
        case 7: (void)editor.endGesture(); break;
        case 8: (void)editor.beginEditing(id); break;
        case 9: (void)editor.changeText(pm::docOfLines(std::to_string(pick(random_, 0, 99)))); break;
        case 10: (void)(chance(random_, 0.5) ? editor.endEditing() : editor.putBack()); break;
        case 11: doodle(editor, id); break;
        default: (void)editor.move(id, anyPlace()); break;
        }
    }

    void doodle(EditorModel& editor, const UUID& id) {
        if (!editor.editDoodle(id)) editor.beginDoodle(id);
        (void)editor.penDown(anyPlace(), {"red", 3});
        if (chance(random_, 0.3)) editor.eraseAlong(anyPlace(), anyPlace(), 200);
        (void)editor.finishDoodle();
    }

    // Nothing that the other wrote last is changed or taken down.
    void takeBack(Person& person, PartnerID author) {
        auto& editor = person.editor;
        const bool isUndo = chance(random_, 0.6);
        // What is being typed goes out before, as an act of its own.
        (void)editor.endEditing();
        const Board before = person.desk.board();
        const auto done = isUndo ? editor.undo() : editor.redo();
        if (done) ++taken;
        if (!done && done.error() == EditorFault{UndoFault::changedSince}) ++refused;
        const Board& after = person.desk.board();
        EXPECT_TRUE(done || after.items == before.items);
        for (const auto& item : before.items) {
            const auto* now = after.find(item.id);
            EXPECT_TRUE(item.author == author || (now != nullptr && *now == item)) << item.id.lowerString();
        }
    }

    bool commit(std::size_t who) {
        auto& sent = people_[who].desk.sent;
        if (sent.empty()) return false;
        const auto batch = std::move(sent.front());
        sent.erase(sent.begin());
        auto result = BoardLogic::apply(batch.ops, std::move(room_), people_[who].clock.now());
        room_ = std::move(result.board);
        toPeople_[who].emplace_back(batch.batchId);
        if (!result.rejected.empty()) {
            Board welcome = room_;
            welcome.tombstones.clear();
            toPeople_[who].emplace_back(std::move(welcome));
        }
        toPeople_[1 - who].emplace_back(std::move(result.applied));
        return true;
    }

    bool deliver(std::size_t who) {
        if (toPeople_[who].empty()) return false;
        const Message message = std::move(toPeople_[who].front());
        toPeople_[who].pop_front();
        auto& person = people_[who];
        auto& shared = person.desk.shared;
        const auto now = person.clock.now();
        if (const auto* acked = std::get_if<UUID>(&message)) shared.acked(*acked, now);
        if (const auto* ops = std::get_if<std::vector<Op>>(&message)) shared.applyRemote(*ops, now);
        if (const auto* board = std::get_if<Board>(&message)) shared.welcome(*board, now);
        person.desk.changed();
        return true;
    }

    samples::Random random_;
    Board room_;
    std::array<Person, 2> people_{Person{PartnerID::a, deskBoard(), 1000}, Person{PartnerID::b, deskBoard(), 2000}};
    std::array<std::deque<Message>, 2> toPeople_;
};

TEST(UndoProperty, UndoTouchesOnlyWhatThisPersonLastWrote) {
    int taken = 0;
    int refused = 0;
    for (std::uint64_t seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        TwoEditors two{seed};
        for (int i = 0; i < 400; ++i) two.step();
        two.settle();
        taken += two.taken;
        refused += two.refused;
    }
    EXPECT_GT(taken, 5000);
    EXPECT_GT(refused, 100);
}

} // namespace
} // namespace lumaro
