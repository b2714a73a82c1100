// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/ItemFace.h"

#include <QtCore/QSizeF>
#include <QtCore/QString>

#include <vector>

namespace lumaro::samples {

/// A face in one of its states, and the size of its item.
struct ShownItem {
    QString name;
    ItemFace face;
    QSizeF size;
};

/// Items that belong on one sheet.
struct Sheet {
    const char* name;
    int columns;
    std::vector<ShownItem> items;
};

/// Every kind in its usual and its odd states.
std::vector<Sheet> itemSheets();

/// A made-up landscape, as a photo or a cover may be.
QImage landscape(QSize size, int hue);

} // namespace lumaro::samples
