// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// The names of the cities that a sheet can show.
std::vector<std::string> sheetCities();

/// What is seen from a window in a city: a row for each hour of the day from midnight, and in it the skies from clear
/// to storm. `density` is pixels for a point. Nothing for a city that has no sheet.
std::optional<QImage> windowSheet(std::string_view city, std::chrono::year_month_day day, double density);

} // namespace lumaro
