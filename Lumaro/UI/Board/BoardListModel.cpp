// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/BoardListModel.h"

#include "LumaroCore/BoardLogic/BoardDiff.h"

#include <utility>

namespace lumaro {
namespace {

QVariant value(const BoardRow& row, int role) {
    switch (role) {
    case BoardListModel::ItemIdRole: return row.itemId;
    case BoardListModel::KindRole: return row.kind;
    case BoardListModel::CenterXRole: return row.center.x;
    case BoardListModel::CenterYRole: return row.center.y;
    case BoardListModel::AnchorXRole: return row.anchor.x;
    case BoardListModel::AnchorYRole: return row.anchor.y;
    case BoardListModel::AnchorReachXRole: return row.anchorReach.x;
    case BoardListModel::AnchorReachYRole: return row.anchorReach.y;
    case BoardListModel::NaturalWidthRole: return row.size.width;
    case BoardListModel::NaturalHeightRole: return row.size.height;
    case BoardListModel::TiltRole: return row.tilt;
    case BoardListModel::ItemScaleRole: return row.scale;
    case BoardListModel::StackRole: return row.stack;
    case BoardListModel::FaceRole: return QVariant::fromValue(row.face);
    case BoardListModel::SpokenRole: return row.spoken;
    case BoardListModel::ArrivingRole: return row.isArriving;
    case BoardListModel::FallingRole: return row.isFalling;
    case BoardListModel::InHandRole: return row.isInHand;
    case BoardListModel::TouchedRole: return row.isTouched;
    default: return {};
    }
}

/// The roles in which two rows of one item differ.
QList<int> changedRoles(const BoardRow& before, const BoardRow& after) {
    QList<int> roles;
    const auto note = [&](bool isSame, std::initializer_list<int> changed) {
        if (!isSame) roles.append(QList<int>(changed));
    };
    note(before.center == after.center, {BoardListModel::CenterXRole, BoardListModel::CenterYRole});
    note(before.anchor == after.anchor, {BoardListModel::AnchorXRole, BoardListModel::AnchorYRole});
    note(before.anchorReach == after.anchorReach, {BoardListModel::AnchorReachXRole, BoardListModel::AnchorReachYRole});
    note(before.size == after.size, {BoardListModel::NaturalWidthRole, BoardListModel::NaturalHeightRole});
    note(before.tilt == after.tilt, {BoardListModel::TiltRole});
    note(before.scale == after.scale, {BoardListModel::ItemScaleRole});
    note(before.stack == after.stack, {BoardListModel::StackRole});
    note(before.kind == after.kind, {BoardListModel::KindRole});
    note(before.face == after.face, {BoardListModel::FaceRole});
    note(before.spoken == after.spoken, {BoardListModel::SpokenRole});
    note(before.isArriving == after.isArriving, {BoardListModel::ArrivingRole});
    note(before.isFalling == after.isFalling, {BoardListModel::FallingRole});
    note(before.isInHand == after.isInHand, {BoardListModel::InHandRole});
    note(before.isTouched == after.isTouched, {BoardListModel::TouchedRole});
    return roles;
}

int at(std::size_t row) {
    return static_cast<int>(row);
}

} // namespace

int BoardListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : at(rows_.size());
}

QVariant BoardListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || std::cmp_greater_equal(index.row(), rows_.size())) return {};
    return value(rows_[static_cast<std::size_t>(index.row())], role);
}

QHash<int, QByteArray> BoardListModel::roleNames() const {
    return {{ItemIdRole, "itemId"},
            {KindRole, "kind"},
            {CenterXRole, "centerX"},
            {CenterYRole, "centerY"},
            {AnchorXRole, "anchorX"},
            {AnchorYRole, "anchorY"},
            {AnchorReachXRole, "anchorReachX"},
            {AnchorReachYRole, "anchorReachY"},
            {NaturalWidthRole, "naturalWidth"},
            {NaturalHeightRole, "naturalHeight"},
            {TiltRole, "tilt"},
            {ItemScaleRole, "itemScale"},
            {StackRole, "stack"},
            {FaceRole, "face"},
            {SpokenRole, "spoken"},
            {ArrivingRole, "isArriving"},
            {FallingRole, "isFalling"},
            {InHandRole, "isInHand"},
            {TouchedRole, "isTouched"}};
}

void BoardListModel::show(Board board, std::vector<BoardRow> rows) {
    const auto diff = BoardLogic::diff(board_, board);
    for (const auto row : diff.removed) {
        beginRemoveRows({}, at(row), at(row));
        rows_.erase(rows_.begin() + at(row));
        endRemoveRows();
    }
    for (const auto& move : diff.reordered) {
        // Qt wants the target as it is counted while the row is still in its old place.
        beginMoveRows({}, at(move.from), at(move.from), {}, at(move.to > move.from ? move.to + 1 : move.to));
        auto row = std::move(rows_[move.from]);
        rows_.erase(rows_.begin() + at(move.from));
        rows_.insert(rows_.begin() + at(move.to), std::move(row));
        endMoveRows();
    }
    for (const auto row : diff.added) {
        beginInsertRows({}, at(row), at(row));
        rows_.insert(rows_.begin() + at(row), rows[row]);
        endInsertRows();
    }
    board_ = std::move(board);
    for (std::size_t row = 0; row < rows.size(); ++row) replace(row, std::move(rows[row]));
}

void BoardListModel::replace(std::size_t row, BoardRow now) {
    const auto roles = changedRoles(rows_[row], now);
    if (roles.isEmpty()) return;
    rows_[row] = std::move(now);
    Q_EMIT dataChanged(index(at(row)), index(at(row)), roles);
}

} // namespace lumaro
