// SPDX-License-Identifier: Apache-2.0
// The messages of the layers' protocol, as its description has them.
#include "LumaroCore/DesktopKit/LayerShell.h"

extern "C" {
#include <wlr-layer-shell.inc>
// A layer may have popups, which belong to another protocol. Ours has none, so its name is enough.
const wl_interface xdg_popup_interface{"xdg_popup", 1, 0, nullptr, 0, nullptr};
}
