// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Windows/ScreenList.h"

#include <utility>

namespace lumaro {

ScreenList::ScreenList(DesktopBoards& boards, QObject* parent)
    : QAbstractListModel(parent), boards_(boards), shown_(boards.choices()) {
    // Screens come and go so seldom that the whole list is reset.
    connect(&boards_, &DesktopBoards::changed, this, [this] {
        if (boards_.choices() == shown_) return;
        beginResetModel();
        shown_ = boards_.choices();
        endResetModel();
    });
}

int ScreenList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant ScreenList::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || std::cmp_greater_equal(index.row(), shown_.size())) return {};
    const auto& choice = shown_[static_cast<std::size_t>(index.row())];
    if (role == NameRole) return choice.screen;
    return role == ShownRole ? QVariant{choice.isChosen} : QVariant{};
}

bool ScreenList::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != ShownRole || std::cmp_greater_equal(index.row(), shown_.size())) return false;
    boards_.choose(shown_[static_cast<std::size_t>(index.row())].screen, value.toBool());
    return true;
}

QHash<int, QByteArray> ScreenList::roleNames() const {
    return {{NameRole, "name"}, {ShownRole, "isShown"}};
}

} // namespace lumaro
