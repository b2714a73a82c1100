// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtSystemZone.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {
namespace {

class SystemZoneTest : public testing::Test {
public:
    SystemZoneTest() {
        if (const char* const zone = std::getenv("TZ")) before_ = zone; // NOLINT(concurrency-mt-unsafe)
    }
    SystemZoneTest(const SystemZoneTest&) = delete;
    SystemZoneTest& operator=(const SystemZoneTest&) = delete;
    ~SystemZoneTest() override {
        if (before_)
            set(*before_);
        else
            unsetenv("TZ"); // NOLINT(concurrency-mt-unsafe)
    }

protected:
    static void set(const std::string& zone) { setenv("TZ", zone.c_str(), 1); } // NOLINT(concurrency-mt-unsafe)

private:
    std::optional<std::string> before_;
};

TEST_F(SystemZoneTest, IsTheNameAsItIsNowAndEmptyWhenThereIsNone) {
    QtSystemZone zone;
    const std::vector<std::pair<std::string, std::string>> names{
        {"Europe/Berlin", "Europe/Berlin"},
        {"America/Argentina/Ushuaia", "America/Argentina/Ushuaia"},
        {":Asia/Kathmandu", "Asia/Kathmandu"},
        {"US/Pacific", "US/Pacific"},
        {"EST5EDT", "EST5EDT"},
        {"Etc/GMT+5", "Etc/GMT+5"},
        {"Local time", ""},
        {"Nowhere/Town", ""},
        {"MSK-3", ""},
        {"CET-1CEST,M3.5.0,M10.5.0/3", ""},
        {"<+03>-3", ""},
        {"/etc/passwd", ""},
        {"Europe/Berlin", "Europe/Berlin"}};
    for (const auto& [set, name] : names) {
        SystemZoneTest::set(set);
        EXPECT_EQ(zone.identifier(), name) << set;
    }
}

TEST_F(SystemZoneTest, KnowsTheNamesOfItsTableAloneWhoeverSaysThem) {
    QtSystemZone zone;
    for (const char* const known : {"Europe/Berlin", "America/Argentina/Ushuaia", "UTC", "EST5EDT", "US/Pacific", "Etc/GMT+5"}) {
        EXPECT_TRUE(zone.isKnown(known)) << known;
    }
    for (const auto& other :
         std::vector<std::string>{"", "Mars/Base", "MSK-3", "CET-1CEST", "../../etc/passwd", "/etc/localtime",
                                  "Europe/Berlin\n", "Europe/", std::string(100'000, 'A')}) {
        EXPECT_FALSE(zone.isKnown(other)) << other.substr(0, 40);
    }
}

} // namespace
} // namespace lumaro
