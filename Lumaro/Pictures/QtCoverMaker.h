// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/CoverMaker.h"

namespace lumaro {

/// Makes covers with Qt's readers of pictures, at most 4096 by 4096 pixels of them.
class QtCoverMaker final : public CoverMaker {
public:
    std::optional<Cover> ofPicture(std::string_view bytes) override;
    std::optional<Cover> ofLocalUrl(const std::string& url) override;
    UUID idOf(std::string_view text) override;
};

} // namespace lumaro
