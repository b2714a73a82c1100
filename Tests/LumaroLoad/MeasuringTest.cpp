// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/Histogram.h"
#include "LumaroLoad/Ledger.h"
#include "Samples/Samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {
namespace {

using std::chrono::nanoseconds;

TEST(Histogram, QuantilesAreThoseOfTheSpansToOnePartIn128) {
    std::mt19937_64 random{1};
    std::vector<std::int64_t> spans;
    Histogram both;
    Histogram second;
    for (int i = 0; i < 10'000; ++i) {
        spans.push_back(static_cast<std::int64_t>(random() >> (2 + random() % 62)));
        (i % 2 == 0 ? both : second).record(nanoseconds{spans.back()});
    }
    both.add(second);
    std::ranges::sort(spans);
    for (const double share : {0.0001, 0.5, 0.9, 0.99, 0.9999}) {
        const std::int64_t exact = spans.at(static_cast<std::size_t>(share * 10'000) - 1);
        EXPECT_GE(both.quantile(share).count(), exact) << share;
        EXPECT_LE(both.quantile(share).count(), exact + exact / 128) << share;
    }
    EXPECT_EQ(both.max().count(), spans.back());
    EXPECT_EQ(both.quantile(1).count(), spans.back());
}

// A script of words: "sa1" sent by a, "aa1" its ack at a, "ra1" its relay to b. What the ledger finds wrong with the
// last word, or with what is missing behind it; nothing when all is well.
std::string faultAfter(std::string_view script) {
    Ledger ledger;
    std::string fault;
    for (std::size_t i = 0; i < script.size(); i += 4) {
        const PartnerID side = script[i + 1] == 'a' ? PartnerID::a : PartnerID::b;
        const UUID batch = samples::numberedId(static_cast<std::uint64_t>(script[i + 2]));
        if (script[i] == 's') {
            ledger.sent(side, batch, {});
            continue;
        }
        const auto span = script[i] == 'a' ? ledger.acked(side, batch, {}) : ledger.relayed(side, batch, {});
        if (!span) fault = span.error().text;
    }
    return fault.empty() && !ledger.isSettled() ? ledger.missing().at(0).text : fault;
}

TEST(Ledger, NoticesEveryWayARoomCanBreakItsWord) {
    const struct {
        const char* script;
        const char* fault;
    } cases[] = {
        {"sa1 aa1 ra1", ""},
        {"sa1 sb2 aa1 rb2 ab2 ra1", "elsewhere in the author's order"},
        {"sa1 sb2 aa1 rb2 ra1 ab2", ""},
        {"sa1 sb2 aa1 rb2 ab2", "elsewhere in the partner's order"},
        {"sa1 sa2 aa2", "overtook"},
        {"sa1 sa2 aa1 aa2 ra2", "overtook"},
        {"sa1 aa1 ra1 aa1", "the ack of batch 00000000-0000-0000-0000-000000000031 came twice"},
        {"sa1 aa1 ra1 ra1", "the relay of batch 00000000-0000-0000-0000-000000000031 came twice"},
        {"sa1 ra1 rb1", "nobody sent"},
        {"sa1 ra1", "the ack of batch 00000000-0000-0000-0000-000000000031 never came"},
        {"sa1 aa1", "the relay of batch 00000000-0000-0000-0000-000000000031 never came"},
    };
    for (const auto& [script, fault] : cases) {
        const std::string found = faultAfter(script);
        EXPECT_EQ(found.empty(), std::string_view{fault}.empty()) << script << ": " << found;
        EXPECT_NE(found.find(fault), std::string::npos) << script << ": " << found;
    }
}

TEST(Ledger, SpansCountFromSending) {
    Ledger ledger;
    const Ledger::Clock::time_point sent{nanoseconds{1'000}};
    ledger.sent(PartnerID::b, samples::numberedId(1), sent);
    EXPECT_EQ(ledger.acked(PartnerID::b, samples::numberedId(1), sent + nanoseconds{70}), nanoseconds{70});
    EXPECT_EQ(ledger.relayed(PartnerID::b, samples::numberedId(1), sent + nanoseconds{90}), nanoseconds{90});
}

} // namespace
} // namespace lumaro
