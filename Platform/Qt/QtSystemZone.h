// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/SystemZone.h"

namespace lumaro {

/// The time zone as Qt finds it: by the environment's "TZ", else by the system's settings.
class QtSystemZone final : public SystemZone {
public:
    std::string identifier() override;
    bool isKnown(std::string_view name) override;
};

} // namespace lumaro
