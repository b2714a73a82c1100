// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/ChosenPlace.h"
#include "LumaroCore/Places/PlaceTable.h"

#include <QtCore/QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace lumaro {

/// The towns that what a person types may mean, the likeliest first: rows with the roles `name` and `country`, both in
/// lower case.
class PlaceChoices final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the view of the place has it")
    Q_PROPERTY(QString typed READ typed WRITE setTyped NOTIFY typedChanged)
    /// Something was typed, and no town begins like it.
    Q_PROPERTY(bool isNothingFound READ isNothingFound NOTIFY typedChanged)

public:
    enum class Role { name = Qt::UserRole, country };

    /// More than people read, and far fewer than there are.
    static constexpr std::size_t most = 20;

    /// What the table reads outlives the list.
    explicit PlaceChoices(const PlaceTable& towns) : towns_(towns) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QString& typed() const { return typed_; }
    void setTyped(const QString& typed);
    bool isNothingFound() const { return rows_.empty() && !typed_.trimmed().isEmpty(); }
    /// The town of that row, if there is one.
    std::optional<ChosenPlace> at(int row) const;

Q_SIGNALS:
    void typedChanged();

private:
    struct Row {
        QString name;
        QString country;
        ChosenPlace place;
    };

    void show(std::vector<Row> rows);

    PlaceTable towns_;
    QString typed_;
    std::vector<Row> rows_;
};

} // namespace lumaro
