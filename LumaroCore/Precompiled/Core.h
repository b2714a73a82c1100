// SPDX-License-Identifier: Apache-2.0
#pragma once

// What most files read, compiled once. No file includes this: each names what it needs.

#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Protocol/Messages.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <expected>
#include <functional>
#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <numeric>
#include <optional>
#include <ranges>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>
