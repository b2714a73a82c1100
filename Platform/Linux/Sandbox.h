// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace lumaro {

/// What tells a program whether it runs in a sandbox.
struct SandboxSigns {
    std::string flatpakInfo; ///< the file that Flatpak puts into each of its sandboxes
    std::string snap;        ///< the folder of the snap that the environment names; empty without one
    std::string program;     ///< the path of the program's file

    /// As this process finds them.
    static SandboxSigns here();
};

/// A program that was merely started by a snap has its environment too; one that is in a snap also lies in its folder.
bool isInSandbox(const SandboxSigns& signs);

} // namespace lumaro
