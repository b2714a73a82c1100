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

} // namespace
} // namespace lumaro
