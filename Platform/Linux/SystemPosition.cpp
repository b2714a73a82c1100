// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/SystemPosition.h"

#include "Platform/Linux/GeoCluePosition.h"
#include "Platform/Linux/PortalPosition.h"
#include "Platform/Linux/Sandbox.h"

#include <utility>

namespace lumaro {
namespace {

std::unique_ptr<PositionSource> openWay() {
    if (isInSandbox(SandboxSigns::here())) return std::make_unique<PortalPosition>();
    return std::make_unique<GeoCluePosition>();
}

} // namespace

SystemPosition::SystemPosition() : way_(openWay()) {
}

std::unique_ptr<PositionSource::Search> SystemPosition::search(HerePrecision precision,
                                                               std::move_only_function<void(Answer)> then) {
    return way_->search(precision, std::move(then));
}

} // namespace lumaro
