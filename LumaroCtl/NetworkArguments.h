// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCtl/NetworkVerbs.h"
#include "LumaroCtl/Streams.h"

#include <functional>
#include <memory>

namespace CLI {
class App;
}

namespace lumaro {

/// Runs the verb that the command line names.
using RunVerb = std::function<ExitStatus(Streams)>;

struct NetworkValues;

/// What the command line said to the verbs with a network; filled in while it is read.
class NetworkArguments {
public:
    /// Adds the verbs to `app`; parsing one sets `run`. Both outlive this.
    NetworkArguments(CLI::App& app, RunVerb& run);
    NetworkArguments(const NetworkArguments&) = delete;
    NetworkArguments& operator=(const NetworkArguments&) = delete;
    ~NetworkArguments();

private:
    std::unique_ptr<NetworkValues> values_;
};

} // namespace lumaro
