// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/DownloadOrigin.h"

#include <string>
#include <utility>

namespace lumaro {

/// Browsers keep the address of a download in the attribute "user.xdg.origin.url" of its file: that of the program, and
/// of the packages and archives of that name in the download folder.
class DownloadAttributes final : public DownloadOrigin {
public:
    struct Places {
        std::string program; ///< the path of the running program
        std::string folder;  ///< what is downloaded lies there
    };

    explicit DownloadAttributes(Places places) : places_(std::move(places)) {}
    /// Where this person's browsers put what they download.
    static std::string userFolder();

    std::vector<std::string> origins() override;

private:
    Places places_;
};

} // namespace lumaro
