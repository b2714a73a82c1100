// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/PlaceChoices.h"

#include "Lumaro/UI/Board/PlaceWords.h"
#include "Lumaro/UI/Text.h"

#include <algorithm>
#include <string>
#include <utility>

namespace lumaro {

int PlaceChoices::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant PlaceChoices::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const auto& row = rows_[static_cast<std::size_t>(index.row())];
    switch (Role{role}) {
    case Role::name: return row.name;
    case Role::country: return row.country;
    }
    return {};
}

QHash<int, QByteArray> PlaceChoices::roleNames() const {
    return {{static_cast<int>(Role::name), "name"}, {static_cast<int>(Role::country), "country"}};
}

void PlaceChoices::setTyped(const QString& typed) {
    if (typed_ == typed) return;
    typed_ = typed;
    std::vector<Row> rows;
    const auto text = typed.trimmed().toStdString();
    if (!text.empty()) {
        for (const auto& town : towns_.find(text, most)) {
            rows.push_back({qText(town.name).toLower(), countryName(town.country),
                            ChosenPlace{.name = std::string{town.name},
                                        .country = std::string{town.country},
                                        .zone = std::string{town.zone},
                                        .lat = town.position.latitude,
                                        .lon = town.position.longitude}});
        }
    }
    show(std::move(rows));
    Q_EMIT typedChanged();
}

std::optional<ChosenPlace> PlaceChoices::at(int row) const {
    if (row < 0 || row >= rowCount()) return std::nullopt;
    return rows_[static_cast<std::size_t>(row)].place;
}

/// Rows stay where they are and show another town, so that a list does not jump under people's eyes.
void PlaceChoices::show(std::vector<Row> rows) {
    const auto before = rowCount();
    const auto after = static_cast<int>(rows.size());
    if (after < before) {
        beginRemoveRows({}, after, before - 1);
        rows_.resize(rows.size());
        endRemoveRows();
    }
    const auto shared = std::min(before, after);
    std::swap_ranges(rows_.begin(), rows_.begin() + shared, rows.begin());
    if (shared > 0) Q_EMIT dataChanged(index(0), index(shared - 1));
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        rows_.insert(rows_.end(), std::make_move_iterator(rows.begin() + shared), std::make_move_iterator(rows.end()));
        endInsertRows();
    }
}

} // namespace lumaro
