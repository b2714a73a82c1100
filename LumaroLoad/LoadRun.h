// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroLoad/LoadOptions.h"
#include "LumaroLoad/Report.h"

#include <expected>
#include <string>

namespace lumaro {

/// The whole measurement: makes the rooms, measures, checks. An error when it could not be made.
[[nodiscard]] std::expected<Report, std::string> runLoad(const LoadOptions& options);

} // namespace lumaro
