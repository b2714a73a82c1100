// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/Report.h"

#include "LumaroCore/Support/JsonCodec.h"

#include <iomanip>
#include <sstream>

namespace lumaro {
namespace {

// Violations that the lines for people show.
constexpr std::size_t shownViolations = 20;

double milliseconds(Histogram::Span span) {
    return std::chrono::duration<double, std::milli>{span}.count();
}

std::optional<LatencyReport> latency(const Histogram& spans) {
    if (spans.count() == 0) return std::nullopt;
    return LatencyReport{.count = static_cast<std::int64_t>(spans.count()),
                         .p50 = milliseconds(spans.quantile(0.5)),
                         .p90 = milliseconds(spans.quantile(0.9)),
                         .p99 = milliseconds(spans.quantile(0.99)),
                         .max = milliseconds(spans.max())};
}

void addUsage(Report& report, const LoadOptions& options, const Measured& measured) {
    if (measured.usageAtLast) report.residentKiB = measured.usageAtLast->residentKiB;
    if (measured.cpu && measured.findings.edits > 0)
        report.cpuMicrosecondsPerEdit =
            static_cast<double>(measured.cpu->count()) / static_cast<double>(measured.findings.edits);
    if (options.mode == LoadMode::idle && measured.usageAtFirst && measured.usageAtLast)
        report.kibPerRoom =
            static_cast<double>(measured.usageAtLast->residentKiB - measured.usageAtFirst->residentKiB) /
            static_cast<double>(options.rooms);
}

void show(std::ostream& out, const char* what, const std::optional<LatencyReport>& latency) {
    if (!latency) return;
    out << what << "p50 " << latency->p50 << "  p90 " << latency->p90 << "  p99 " << latency->p99 << "  max "
        << latency->max << " ms  (" << latency->count << ")\n";
}

void show(std::ostream& out, const char* what, const std::optional<double>& value, const char* unit) {
    if (value) out << what << *value << unit << '\n';
}

} // namespace

Report makeReport(const LoadOptions& options, const Measured& measured) {
    const Findings& findings = measured.findings;
    Report report;
    report.rooms = static_cast<std::int64_t>(options.rooms);
    report.seconds = options.seconds;
    report.syncMs = milliseconds(measured.syncs.quantile(0.5));
    if (findings.edits > 0) report.editsPerSecond = static_cast<double>(findings.edits) / options.seconds;
    report.toAck = latency(findings.toAck);
    report.toPartner = latency(findings.toPartner);
    if (report.toAck) report.ackAboveSyncMs = report.toAck->p50 - report.syncMs;
    if (report.toPartner) report.partnerAboveSyncMs = report.toPartner->p50 - report.syncMs;
    report.joins = latency(findings.joins);
    addUsage(report, options, measured);
    for (const Violation& violation : findings.violations) report.violations.push_back(violation.text);
    return report;
}

std::string linesOf(const Report& report) {
    std::ostringstream out;
    out << std::fixed << std::setprecision(3);
    out << "rooms         " << report.rooms << '\n';
    show(out, "edits         ", report.editsPerSecond, " a second");
    show(out, "to ack        ", report.toAck);
    show(out, "to partner    ", report.toPartner);
    show(out, "to welcome    ", report.joins);
    show(out, "fdatasync     ", report.syncMs, " ms in the median");
    show(out, "  above it    ", report.ackAboveSyncMs, " ms to the ack");
    show(out, "              ", report.partnerAboveSyncMs, " ms to the partner");
    show(out, "server CPU    ", report.cpuMicrosecondsPerEdit, " us an edit");
    if (report.residentKiB) out << "server memory " << *report.residentKiB << " KiB\n";
    show(out, "              ", report.kibPerRoom, " KiB a room");
    out << "violations    " << report.violations.size() << '\n';
    for (std::size_t i = 0; i < report.violations.size() && i < shownViolations; ++i)
        out << "  " << report.violations[i] << '\n';
    return out.str();
}

std::string jsonOf(const Report& report) {
    return Wire::encode(report).value_or("");
}

} // namespace lumaro
