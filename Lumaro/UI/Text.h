// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/UUID.h"

#include <QtCore/QString>

#include <string_view>

namespace lumaro {

// Between the model's UTF-8 and Qt's strings.

inline QString qText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The id as views know it, in lower case.
inline QString qText(const UUID& id) {
    return qText(std::string_view{id.lowerString()});
}

} // namespace lumaro
