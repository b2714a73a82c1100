// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// What becomes of something that another program drags over the board, told by what it says of it: nothing is read
/// before it falls. For QML.
class DropOffer final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// More files than a board has room for are none that anybody means.
    static constexpr qsizetype mostFiles = 60;

    /// "picture" for encoded bytes, "files" for files whose names are pictures', "text", or "" for what the board
    /// cannot take. A picture that a browser holds comes with its address: the bytes go before it, but a file before
    /// bytes.
    Q_INVOKABLE static QString kindOf(const QStringList& formats, const QList<QUrl>& urls, bool hasText);
};

} // namespace lumaro
