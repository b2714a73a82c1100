// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <wayland-client.h>

// The protocol names an argument as C++ names a thing of its own.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define namespace nameSpace
#include <wlr-layer-shell.h>
#undef namespace
#ifdef __clang__
#pragma clang diagnostic pop
#endif
