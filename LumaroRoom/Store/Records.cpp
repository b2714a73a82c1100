// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Store/Records.h"

#include <algorithm>
#include <cstddef>

namespace lumaro {

bool equalInConstantTime(const TokenHash& left, const TokenHash& right) {
    unsigned difference = 0;
    for (std::size_t i = 0; i < left.size(); ++i) difference |= static_cast<unsigned>(left[i] ^ right[i]);
    return difference == 0;
}

PartnerSet Members::paired() const {
    PartnerSet slots;
    for (const auto& device : devices) slots.insert(device.slot);
    return slots;
}

const DeviceRecord* Members::findToken(const TokenHash& token) const {
    const DeviceRecord* found = nullptr;
    for (const auto& device : devices) {
        if (equalInConstantTime(device.token, token)) found = &device;
    }
    return found;
}

const DeviceRecord* Members::findDevice(std::string_view deviceId) const {
    const auto found = std::ranges::find(devices, deviceId, &DeviceRecord::deviceId);
    return found == devices.end() ? nullptr : &*found;
}

} // namespace lumaro
