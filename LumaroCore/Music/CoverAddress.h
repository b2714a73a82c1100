// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/CoupleEndpoints.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumaro::CoverAddress {

/// Whether a cover is taken from there as it is: an https URL, without a port, on one of the hosts from which the two
/// large catalogues serve their covers.
bool isOfCatalogue(std::string_view url);

/// Where a couple's room keeps a cover.
std::string inRoom(const CoupleEndpoints& endpoints, const UUID& id);
/// The cover that such a URL names, on whatever server, when it is of this couple: both people may reach their room
/// under different names.
std::optional<UUID> idInRoom(std::string_view url, std::string_view coupleId);

/// Whether a sender may fetch a picture from there to make a cover of it: https on a host with a name, not an address
/// and none of the names for this computer or its own network.
bool mayBeFetched(std::string_view url);

/// The URL that serves the cover in the size that we show: catalogues' names for small and large pictures, also under
/// hosts they have left. Any other URL as it is.
std::string atOurSize(std::string url);

} // namespace lumaro::CoverAddress
