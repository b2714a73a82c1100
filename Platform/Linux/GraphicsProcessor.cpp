// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/GraphicsProcessor.h"

#include <QtCore/QDir>

namespace lumaro {

bool hasGraphicsProcessor() {
    // The kernel has one of these for each.
    return !QDir{QStringLiteral("/dev/dri")}.entryList({QStringLiteral("renderD*")}, QDir::System).isEmpty();
}

} // namespace lumaro
