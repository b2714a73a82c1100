// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Setup/SetupReport.h"

#include "LumaroRoom/Server/HttpDate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

const Instant noon = std::chrono::sys_days{std::chrono::year{2026} / 5 / 1} + 12h;

std::string pageFor(const std::string& server) {
    return R"(<a class="go" href="lumaro://join-invite?i=check-setup&amp;s=)" + server + R"(">open our board</a>)";
}

// A room in good order at https://board.example/us.
SetupSight wellSet() {
    return {.asked = Url::parse("https://board.example/us/").value(),
            .addresses = std::vector<std::string>{"192.0.2.1", "2001:db8::1"},
            .unreachable = {},
            .untrusted = {},
            .plain = SetupAnswer{426, R"({"code":"upgrade_required","message":""})", "", noon - 60s},
            .upgraded = SetupAnswer{401, R"({"code":"unauthorized","message":""})", "", noon},
            .page = SetupAnswer{200, pageFor("https%3A%2F%2Fboard.example%2Fus"), "", noon},
            .health = SetupAnswer{200, "", "", noon},
            .now = noon};
}

std::vector<SetupFault> faultsOf(const SetupSight& sight) {
    std::vector<SetupFault> faults;
    for (const auto& finding : judge(sight).findings) faults.push_back(finding.fault);
    return faults;
}

TEST(SetupReportTest, ARoomInGoodOrderHasNoFaults) {
    const auto report = judge(wellSet());
    EXPECT_EQ(report.exitStatus(), 0) << report.text();
    EXPECT_TRUE(report.remarks.empty()) << report.text();
    EXPECT_TRUE(report.text().ends_with("people can meet here.\n"));
}

TEST(SetupReportTest, WhatADeviceMeetsFirstIsTheStatusAndTheRestIsSaidToo) {
    auto sight = wellSet();
    sight.upgraded = SetupAnswer{426, "", "", {}};
    sight.page = SetupAnswer{200, pageFor("http%3a%2f%2f127.0.0.1:7700"), "", {}};
    sight.plain->date = noon + 61s;
    sight.health->status = 503;
    EXPECT_EQ(faultsOf(sight), (std::vector{SetupFault::noUpgrade, SetupFault::wrongPublicURL, SetupFault::clockOff,
                                            SetupFault::unwell}));
    EXPECT_EQ(judge(sight).exitStatus(), 15);
    EXPECT_NE(
        judge(sight).text().find("begin with http://127.0.0.1:7700, where you asked for https://board.example/us"),
        std::string::npos);
    sight.untrusted = CertificateFault{CertificateFault::Kind::expired, "certificate has expired"};
    EXPECT_EQ(faultsOf(sight), std::vector{SetupFault::certificate}) << "nothing is told of what was not looked at";
}

TEST(SetupReportTest, WhatAServerSendsStaysOnItsLineAndShort) {
    auto sight = wellSet();
    sight.page = SetupAnswer{200, pageFor("https://x\x1b]0;\nwrong  all is lost" + std::string(60'000, 'y')), "", {}};
    const auto text = judge(sight).text();
    EXPECT_EQ(faultsOf(sight), std::vector{SetupFault::wrongPublicURL});
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
    EXPECT_LT(text.size(), 2'000U);
    sight.page = SetupAnswer{200, pageFor("%4"), "", {}};
    EXPECT_EQ(faultsOf(sight), std::vector{SetupFault::wrongPublicURL});
}

TEST(HttpDateTest, IsReadInTheFormInWhichItIsWritten) {
    const Instant instant = std::chrono::sys_days{std::chrono::year{1994} / 11 / 6} + 8h + 49min + 37s;
    EXPECT_EQ(httpDate(instant + 999ms), "Sun, 06 Nov 1994 08:49:37 GMT");
    EXPECT_EQ(parseHttpDate("Sun, 06 Nov 1994 08:49:37 GMT"), instant);
    for (const auto* text :
         {"", "Mon, 06 Nov 1994 08:49:37 GMT", "Sun, 06 Nov 1994 08:49:60 GMT", "Sun, 31 Feb 1994 08:49:37 GMT",
          "Sun, 06-Nov-1994 08:49:37 GMT", "Sun,  6 Nov 1994 08:49:37 GMT", "Sun, 06 Nov 1994 08:49:37 CET",
          "Sun, 06 Nov 1994 08:49:-7 GMT"}) {
        EXPECT_FALSE(parseHttpDate(text)) << text;
    }
}

} // namespace
} // namespace lumaro
