// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/BoardListModel.h"

#include "LumaroCore/BoardLogic/Apply.h"
#include "Samples/Samples.h"

#include <QtCore/QTimeZone>
#include <QtTest/QAbstractItemModelTester>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace lumaro {
namespace {

using namespace samples;

const LiveContext::Picture noPicture = [](const UUID&, Size) { return ItemPicture{}; };

struct Rows {
    std::vector<BoardRow> of(const Board& board) const {
        return rowsOf(board, {none, none, none},
                      {.partner = partner,
                       .own = own,
                       .names = names,
                       .now = Instant{std::chrono::seconds{1'790'000'000}},
                       .zone = zone,
                       .music = music,
                       .place = place,
                       .covers = covers,
                       .city = city,
                       .picture = noPicture});
    }

    std::set<UUID> none;
    BoardPresence partner;
    ClientMessage::Presence own;
    MusicState music;
    PlaceState place;
    CoverState covers;
    CityState city;
    std::map<PartnerID, std::string> names;
    QTimeZone zone = QTimeZone::utc();
};

// A list of its own that does only what the model's signals say.
struct Mirror {
    explicit Mirror(const BoardListModel& model) : model_(model) {
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, [this](const QModelIndex&, int first, int last) {
            for (int row = first; row <= last; ++row) ids.insert(ids.begin() + row, at(row));
        });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, [this](const QModelIndex&, int first, int last) {
            ids.erase(ids.begin() + first, ids.begin() + last + 1);
        });
        QObject::connect(&model, &QAbstractItemModel::rowsMoved,
                         [this](const QModelIndex&, int from, int, const QModelIndex&, int to) {
                             const auto id = ids[static_cast<std::size_t>(from)];
                             ids.erase(ids.begin() + from);
                             ids.insert(ids.begin() + (to > from ? to - 1 : to), id);
                         });
        QObject::connect(&model, &QAbstractItemModel::modelReset, [this] { ++resets; });
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex& first, const QModelIndex&, const QList<int>& roles) {
                             changed.emplace_back(at(first.row()), roles);
                         });
    }

    QString at(int row) const { return model_.index(row).data(BoardListModel::ItemIdRole).toString(); }

    const BoardListModel& model_;
    std::vector<QString> ids;
    std::vector<std::pair<QString, QList<int>>> changed;
    int resets = 0;
};

TEST(BoardListModelTest, tellsEveryChangeSoThatAListThatOnlyListensStaysTheSame) {
    const Rows rows;
    BoardListModel model;
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    Mirror mirror{model};
    Random random{7};
    for (int step = 0; step < 60; ++step) {
        auto board = step % 11 == 10 ? Board{} : anyBoard(random, pick(random, std::size_t{0}, std::size_t{20}));
        if (step % 3 == 1) std::ranges::reverse(board.items);
        model.show(board, rows.of(board));
        ASSERT_EQ(model.rowCount(), static_cast<int>(board.items.size()));
        ASSERT_EQ(mirror.ids.size(), board.items.size());
        for (int row = 0; row < model.rowCount(); ++row)
            ASSERT_EQ(mirror.ids[static_cast<std::size_t>(row)], mirror.at(row));
    }
    EXPECT_EQ(mirror.resets, 0);
}

TEST(BoardListModelTest, tellsOnlyTheRolesOfARowThatLooksDifferent) {
    const Rows rows;
    BoardListModel model;
    auto board = typicalBoard();
    model.show(board, rows.of(board));
    Mirror mirror{model};
    model.show(board, rows.of(board));
    EXPECT_TRUE(mirror.changed.empty());

    auto& moved = board.items[3];
    moved.center.x += 5;
    moved.updatedAt += std::chrono::seconds{1};
    model.show(board, rows.of(board));
    ASSERT_EQ(mirror.changed.size(), 1U);
    EXPECT_EQ(mirror.changed.front().first.toStdString(), moved.id.lowerString());
    for (const int role : mirror.changed.front().second) {
        EXPECT_TRUE(role == BoardListModel::CenterXRole || role == BoardListModel::CenterYRole ||
                    role == BoardListModel::AnchorXRole || role == BoardListModel::AnchorYRole)
            << role;
    }
}

} // namespace
} // namespace lumaro
