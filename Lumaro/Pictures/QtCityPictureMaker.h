// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/CityWindow/CityPictureMaker.h"

namespace lumaro {

/// Makes pictures of cities with Qt's reader of PNG.
class QtCityPictureMaker final : public CityPictureMaker {
public:
    std::optional<CityPicture> ofPicture(std::string_view png, std::int64_t width, std::int64_t height) override;
};

} // namespace lumaro
