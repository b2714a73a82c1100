// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fields.h"
#include "LumaroLoad/LoadOptions.h"
#include "LumaroLoad/LoadRoom.h"
#include "LumaroLoad/Probes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace lumaro {

/// How long something took, in milliseconds.
struct LatencyReport {
    std::int64_t count = 0;
    double p50 = 0;
    double p90 = 0;
    double p99 = 0;
    double max = 0;

    static constexpr auto fields() {
        return std::tuple{Field{"count", &LatencyReport::count}, Field{"p50", &LatencyReport::p50},
                          Field{"p90", &LatencyReport::p90}, Field{"p99", &LatencyReport::p99},
                          Field{"max", &LatencyReport::max}};
    }
};

/// What a run found, as it is shown. What its mode does not measure is absent.
struct Report {
    std::int64_t rooms = 0;
    double seconds = 0;
    double syncMs = 0; ///< the median of the file system's own fdatasync
    std::optional<double> editsPerSecond;
    std::optional<LatencyReport> toAck;
    std::optional<LatencyReport> toPartner;
    std::optional<double> ackAboveSyncMs; ///< between the medians
    std::optional<double> partnerAboveSyncMs;
    std::optional<double> cpuMicrosecondsPerEdit;
    std::optional<LatencyReport> joins;
    std::optional<std::int64_t> residentKiB;
    std::optional<double> kibPerRoom;
    std::vector<std::string> violations;

    static constexpr auto fields() {
        return std::tuple{Field{"rooms", &Report::rooms},
                          Field{"seconds", &Report::seconds},
                          Field{"fdatasyncMs", &Report::syncMs},
                          Field{"editsPerSecond", &Report::editsPerSecond},
                          Field{"toAckMs", &Report::toAck},
                          Field{"toPartnerMs", &Report::toPartner},
                          Field{"ackAboveFdatasyncMs", &Report::ackAboveSyncMs},
                          Field{"partnerAboveFdatasyncMs", &Report::partnerAboveSyncMs},
                          Field{"cpuMicrosecondsPerEdit", &Report::cpuMicrosecondsPerEdit},
                          Field{"joinMs", &Report::joins},
                          Field{"residentKiB", &Report::residentKiB},
                          Field{"kibPerRoom", &Report::kibPerRoom},
                          Field{"violations", &Report::violations}};
    }
};

/// What was measured.
struct Measured {
    Findings findings;
    Histogram syncs;
    std::optional<std::chrono::microseconds> cpu; ///< the server's, while measuring
    std::optional<ProcessUsage> usageAtFirst;     ///< before there was any room
    std::optional<ProcessUsage> usageAtLast;      ///< while all rooms are open
};

Report makeReport(const LoadOptions& options, const Measured& measured);
/// Lines for people.
std::string linesOf(const Report& report);
std::string jsonOf(const Report& report);

} // namespace lumaro
