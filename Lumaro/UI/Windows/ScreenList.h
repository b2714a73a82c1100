// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/DesktopBoards.h"

#include <QtCore/QAbstractListModel>

namespace lumaro {

/// The screens that the board may hang on, for the settings: a name each, and whether it does.
class ScreenList final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { NameRole = Qt::UserRole, ShownRole };

    /// The boards outlive the list.
    explicit ScreenList(DesktopBoards& boards, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QHash<int, QByteArray> roleNames() const override;

private:
    DesktopBoards& boards_;
    std::vector<DesktopBoards::Choice> shown_;
};

} // namespace lumaro
