// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace lumaro {

/// The time zone that this computer is set to.
class SystemZone {
public:
    SystemZone() = default;
    SystemZone(const SystemZone&) = delete;
    SystemZone& operator=(const SystemZone&) = delete;
    virtual ~SystemZone() = default;

    /// Its IANA name, as it is now; empty when it has none.
    virtual std::string identifier() = 0;
    /// Whether this computer's table of time zones has a zone of that name, whoever says it.
    virtual bool isKnown(std::string_view name) = 0;
};

} // namespace lumaro
