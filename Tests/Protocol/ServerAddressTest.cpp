// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/ServerAddress.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace lumaro {
namespace {

TEST(ServerAddressTest, P46_WhatPeopleTypeBecomesAnAddress) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"board.example", "https://board.example"},
        {"  HTTPS://Board.Example:8443/Base/ \n", "https://board.example:8443/Base"},
        {"https://93.184.216.34", "https://93.184.216.34"},
        {"localhost:7700", "http://localhost:7700"},
        {"ada-laptop.local", "http://ada-laptop.local"},
        {"http://127.0.0.2", "http://127.0.0.2"},
        {"192.168.1.4:7700/", "http://192.168.1.4:7700"},
        {"http://172.31.255.255", "http://172.31.255.255"},
        {"100.64.0.1", "http://100.64.0.1"},
        {"http://169.254.3.4", "http://169.254.3.4"},
        {"http://[::1]:7700", "http://[::1]:7700"},
        {"[FD12::1]", "http://[fd12::1]"},
        {"https://10.0.0.1", "https://10.0.0.1"},
    };
    for (const auto& [typed, url] : rows) {
        const auto address = ServerAddress::parse(typed);
        ASSERT_TRUE(address) << typed;
        EXPECT_EQ(address->url(), url);
        EXPECT_EQ(ServerAddress::parse(url), address);
        EXPECT_EQ(address->isEncrypted(), url.starts_with("https"));
    }
}

TEST(ServerAddressTest, P46_WithoutEncryptionAnAddressIsNearby) {
    for (const auto* typed :
         {"http://board.example", "http://8.8.8.8", "http://172.32.0.1", "http://100.128.0.1", "http://192.169.0.1",
          "http://[2001:db8::1]", "http://[fc1::1]", "http://local", "http://.local.example", "http://10.0.0.1.example",
          "http://localhost.example", "http://[febf0::1]"}) {
        const auto address = ServerAddress::parse(typed);
        ASSERT_FALSE(address) << typed;
        EXPECT_NE(address.error(), ServerAddress::Fault::empty) << typed;
    }
    EXPECT_EQ(ServerAddress::parse("http://board.example").error(), ServerAddress::Fault::notEncrypted);
    EXPECT_EQ(ServerAddress::parse(" \t").error(), ServerAddress::Fault::empty);
}

TEST(ServerAddressTest, P46_WhatIsNoAddressIsCalledThat) {
    for (const std::string typed : {"ftp://board.example",
                                    "https://",
                                    "https:///x",
                                    "board example",
                                    "https://me@board.example",
                                    "board.example?x",
                                    "board.example#x",
                                    "board.example:",
                                    "board.example:0",
                                    "board.example:65536",
                                    "board.example:7x",
                                    R"(https://a\@b.example)",
                                    "https://-a.example",
                                    "https://a..b",
                                    "https://127.1",
                                    "https://256.1.1.1",
                                    "https://1.2.3.04",
                                    "https://0x7f000001",
                                    "https://[::1",
                                    "https://[a]",
                                    "https://[1:::2]",
                                    "https://\xc3\xa4.example",
                                    "javascript:x",
                                    "."}) {
        const auto address = ServerAddress::parse(typed);
        EXPECT_TRUE(!address && address.error() == ServerAddress::Fault::noAddress) << typed;
    }
    EXPECT_TRUE(ServerAddress::parse("https://a.example/" + std::string(ServerAddress::maxLength - 18, 'x')));
    EXPECT_FALSE(ServerAddress::parse("https://a.example/" + std::string(ServerAddress::maxLength - 17, 'x')));
}

} // namespace
} // namespace lumaro
