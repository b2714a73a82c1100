// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Precompiled/Core.h"

#include <gtest/gtest.h>
