// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <wayland-client.h>

// The protocol names an argument as C++ names a thing of its own.
#define namespace nameSpace
#include <wlr-layer-shell.h>
#undef namespace
