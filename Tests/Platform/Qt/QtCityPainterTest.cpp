// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtCityPainter.h"

#include "Tests/Platform/Qt/QtTest.h"
#include "Tests/Support/ScratchFolder.h"

#include <filesystem>
#include <fstream>
#include <optional>

namespace lumaro {
namespace {

/// The program as a script that does what the test says.
class QtCityPainterTest : public QtTest {
protected:
    void install(const std::string& script) {
        const auto path = folder_.file("lumaro-cityview");
        std::ofstream{path} << "#!/bin/sh\n" << script << "\n";
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }
    auto paint(QtCityPainter& painter) {
        return painter.paint({.page = "https://a", .key = "k1", .at = {}, .width = 16, .height = 16},
                             [this](CityPainter::Answer answer) { answer_ = std::move(answer); });
    }
    CityPainter::Answer painted(const std::string& script) {
        install(script);
        const auto run = paint(painter_);
        EXPECT_FALSE(answer_);
        waitUntil([this] { return answer_.has_value(); });
        return *std::exchange(answer_, std::nullopt);
    }
    std::string failure(const std::string& script) { return painted(script).error().message; }
    std::string written(const std::string& name) const {
        std::ifstream file{folder_.file(name)};
        std::string line;
        std::getline(file, line);
        return line;
    }

    ScratchFolder folder_;
    QtCityPainter painter_{{folder_.file("nowhere"), folder_.path()}};
    std::optional<CityPainter::Answer> answer_;
};

TEST_F(QtCityPainterTest, TheRequestGoesInByTheLineAndThePictureComesOut) {
    EXPECT_FALSE(painter_.isInstalled());
    EXPECT_EQ(painted("cat"),
              "{\"page\":\"https://a\",\"key\":\"k1\",\"lat\":0,\"lon\":0,\"at\":0,\"width\":16,\"height\":16,"
              "\"scale\":1}\n");
    EXPECT_TRUE(painter_.isInstalled());
    EXPECT_EQ(painted("printf '%s' \"$*\""), "") << "no argument that others see";
    EXPECT_EQ(painted("head -c 3000000 /dev/zero")->size(), 3'000'000U);
}

TEST_F(QtCityPainterTest, EveryOtherEndIsAFailure) {
    EXPECT_EQ(failure("printf 'half a picture'; echo 'page not\treached' >&2; exit 69"),
              "exit status 69, page not?reached");
    EXPECT_EQ(failure("exit 1"), "exit status 1");
    EXPECT_EQ(failure("kill -9 $$"), "it crashed");
    EXPECT_LE(failure("yes | head -c 1000000 >&2; exit 3").size(), 400U);
    EXPECT_EQ(failure("yes"), "the picture is too large");
    std::filesystem::permissions(folder_.file("lumaro-cityview"), std::filesystem::perms::owner_read);
    const auto run = paint(painter_);
    waitUntil([this] { return answer_.has_value(); });
    EXPECT_EQ(answer_->error().message, "the program is not installed");
}

TEST_F(QtCityPainterTest, WhatTakesTooLongOrIsDroppedIsKilledAndNotWaitedFor) {
    QtCityPainter hasty{{folder_.path()}, std::chrono::milliseconds{300}};
    install("echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 600");
    auto run = paint(hasty);
    waitUntil([this] { return answer_.has_value(); });
    EXPECT_EQ(answer_->error().message, "no picture in time");
    const auto isGone = [&] { return !std::filesystem::exists("/proc/" + written("pid")); };
    waitUntil(isGone);
    answer_.reset();
    std::filesystem::remove(folder_.file("pid"));
    run = paint(painter_);
    waitUntil([this] { return !written("pid").empty(); });
    run.reset();
    waitUntil(isGone);
    EXPECT_FALSE(answer_);
}

} // namespace
} // namespace lumaro
