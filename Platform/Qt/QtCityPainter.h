// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/CityWindow/CityPainter.h"

#include <QObject>

#include <chrono>
#include <string>
#include <vector>

namespace lumaro {

/// Runs `lumaro-cityview`, which is installed apart from this program, as a process. The request goes to its standard
/// input, so that no list of processes shows the key. A process that is dropped, says too much or takes too long is
/// killed; nothing here waits for it. Runs do not outlive the painter. In the event loop of the thread that made it.
class QtCityPainter final : public CityPainter {
public:
    /// Looks for the program in these folders, the first one first. It ends its own work earlier than `patience`.
    explicit QtCityPainter(std::vector<std::string> folders,
                           std::chrono::milliseconds patience = std::chrono::seconds{45})
        : folders_(std::move(folders)), patience_(patience) {}

    /// Beside the running program, and where packages put programs that people do not start themselves.
    static std::vector<std::string> usualFolders();

    bool isInstalled() override { return !program().empty(); }
    [[nodiscard]] std::unique_ptr<Run> paint(CityRequest request, std::move_only_function<void(Answer)> then) override;

private:
    std::string program() const;

    std::vector<std::string> folders_;
    std::chrono::milliseconds patience_;
    QObject processes_; ///< their owner, also of those that were killed and have not ended yet
};

} // namespace lumaro
