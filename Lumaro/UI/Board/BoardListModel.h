// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/BoardRow.h"

#include <QtCore/QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// The rows of the board for views: fed with whole boards, it tells what came, went, moved and changed.
class BoardListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the scene has it")

public:
    enum Role {
        ItemIdRole = Qt::UserRole,
        KindRole,
        CenterXRole,
        CenterYRole,
        AnchorXRole,
        AnchorYRole,
        AnchorReachXRole,
        AnchorReachYRole,
        NaturalWidthRole,
        NaturalHeightRole,
        TiltRole,
        ItemScaleRole,
        StackRole,
        FaceRole,
        SpokenRole,
        ArrivingRole,
        FallingRole,
        InHandRole,
        TouchedRole,
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The rows are those of the board's items, in their order.
    void show(Board board, std::vector<BoardRow> rows);
    const std::vector<BoardRow>& rows() const { return rows_; }

private:
    void replace(std::size_t row, BoardRow now);

    Board board_;
    std::vector<BoardRow> rows_;
};

} // namespace lumaro
