// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Media/MediaCache.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "Samples/Samples.h"
#include "Tests/Model/StorageFixture.h"

#include <thread>

namespace lumaro {
namespace {

using samples::numberedId;
using Ids = std::vector<std::uint64_t>;

std::string picture(std::size_t bytes = 100) {
    std::string made = "\xff\xd8\xff";
    made.resize(bytes, 'x');
    return made;
}

class MediaCacheTest : public StorageFixture {
protected:
    void start(std::uint64_t limit = 300) { cache_.emplace(disk_, folder_, limit); }
    void put(const Ids& ids) {
        for (const auto id : ids) EXPECT_TRUE(cache_->put(numberedId(id), picture()));
    }
    /// What the cache says it holds; it and no other picture has a file.
    Ids held() {
        Ids ids;
        for (std::uint64_t id = 1; id < 10; ++id) {
            const auto path = cache_->pathOf(numberedId(id));
            EXPECT_EQ(path.has_value(), disk_.readFile(folder_ + "/" + numberedId(id).lowerString()).has_value()) << id;
            if (path) ids.push_back(id);
        }
        return ids;
    }

    std::string folder_ = "/home/bo/media";
    std::optional<MediaCache> cache_;
};

TEST_F(MediaCacheTest, TakesPicturesAndNothingElse) {
    start();
    const std::vector<std::pair<std::string, std::optional<MediaFault>>> rows{
        {"RIFF----WEBPVP8 ", std::nullopt},
        {"<html>sign in first</html>", MediaFault::notAPicture},
        {"", MediaFault::notAPicture},
        {picture(BoardSpec::maxMediaBytes + 1), MediaFault::tooLarge},
        {picture(BoardSpec::maxMediaBytes), std::nullopt},
    };
    for (std::uint64_t id = 0; id < rows.size(); ++id) {
        const auto put = cache_->put(numberedId(id), rows[id].first);
        EXPECT_EQ(put ? std::nullopt : std::optional{put.error().fault}, rows[id].second) << id;
        EXPECT_EQ(cache_->has(numberedId(id)), put.has_value()) << id;
    }
    ASSERT_TRUE(cache_->put(numberedId(4), picture(7)));
    EXPECT_EQ(cache_->read(numberedId(4))->size(), BoardSpec::maxMediaBytes) << "a medium is written once";
}

TEST_F(MediaCacheTest, WhatWasUsedLeastRecentlyGoesFirstAlsoAfterARestart) {
    start();
    put({1, 2, 3});
    cache_->touch(numberedId(1));
    put({4});
    EXPECT_EQ(held(), (Ids{1, 3, 4}));
    EXPECT_EQ(cache_->read(numberedId(3)), picture());
    cache_->flush();
    start();
    EXPECT_EQ(cache_->bytes(), 300U);
    put({5, 6});
    EXPECT_EQ(held(), (Ids{3, 5, 6}));
    start(100);
    put({7});
    EXPECT_EQ(held(), Ids{7}) << "a smaller limit";
}

TEST_F(MediaCacheTest, ALostOrDamagedOrderCostsOnlyTheOrder) {
    const auto line = [](std::uint64_t id, const std::string& rest) { return numberedId(id).lowerString() + rest; };
    for (const auto& order : {std::string{}, "junk\n" + line(1, " 99999999999\n") + line(2, " -1\n") + line(9, " 5\n"),
                              line(1, "") + "\n" + line(2, " 100x"), std::string(40, '\n')}) {
        folder_ += "x";
        start();
        put({1, 2});
        ASSERT_TRUE(disk_.writeFile(folder_ + "/index", order));
        start(3 * BoardSpec::maxMediaBytes);
        EXPECT_EQ(cache_->bytes(), 2 * BoardSpec::maxMediaBytes) << "unknown sizes count in full";
        EXPECT_TRUE(cache_->read(numberedId(1)));
        EXPECT_EQ(cache_->bytes(), BoardSpec::maxMediaBytes + 100);
        EXPECT_EQ(held(), (Ids{1, 2}));
    }
}

TEST_F(MediaCacheTest, WhatWaitsToGoUpIsNeverThrownOut) {
    start(200);
    for (const std::uint64_t id : {1, 2, 3}) {
        ASSERT_TRUE(cache_->putForUpload(numberedId(id), picture(), id == 3 ? "xyz" : "abc"));
    }
    disk_.crash();
    start(200);
    EXPECT_EQ(cache_->waitingFor("abc"), (std::vector{numberedId(1), numberedId(2)}));
    put({4});
    EXPECT_EQ(held(), (Ids{1, 2, 3, 4})) << "over its limit rather than without a picture of one's own";
    EXPECT_TRUE(cache_->uploaded(numberedId(2)));
    cache_->forget("xyz");
    put({5});
    EXPECT_EQ(held(), (Ids{1, 5}));
    start(200);
    EXPECT_EQ(cache_->waitingFor("abc"), std::vector{numberedId(1)});
    EXPECT_TRUE(cache_->waitingFor("xyz").empty());
}

TEST_F(MediaCacheTest, APutThatIsCutShortAnywhereLeavesAWholePictureOrNone) {
    for (int calls = 0; calls <= 10; ++calls) {
        folder_ += "x";
        endAfter(calls);
        start();
        const auto stored = cache_->putForUpload(numberedId(1), picture(), "abc");
        EXPECT_EQ(stored.has_value(), calls == 10) << "five calls for the picture and five for its mark";
        disk_.fault = nullptr;
        disk_.crash(50);
        start();
        EXPECT_EQ(cache_->has(numberedId(1)), calls >= 5) << calls;
        if (calls >= 5) {
            EXPECT_EQ(cache_->read(numberedId(1)), picture());
        }
        EXPECT_EQ(cache_->waitingFor("abc").size(), calls == 10 ? 1U : 0U) << calls;
    }
}

TEST_F(MediaCacheTest, ManyThreadsMayUseItAtOnce) {
    start();
    {
        std::vector<std::jthread> threads;
        for (std::uint64_t thread = 1; thread <= 4; ++thread) {
            threads.emplace_back([this, thread] {
                for (auto id = numberedId(thread); id < numberedId(thread + 5); ++id.bytes.back()) {
                    EXPECT_TRUE(cache_->putForUpload(id, picture(), "abc"));
                    cache_->touch(id);
                    EXPECT_EQ(cache_->read(id), picture());
                }
                cache_->flush();
            });
        }
    }
    EXPECT_EQ(held(), (Ids{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(cache_->bytes(), 800U);
}

TEST_F(MediaCacheTest, FilesThatSomebodyTidiedAwayAreMissedAndLeftOversGo) {
    start();
    put({1, 2});
    for (const auto* name : {".1.new", "notes.txt"}) ASSERT_TRUE(disk_.writeFile(folder_ + "/" + name, "x"));
    ASSERT_TRUE(disk_.removeFile(cache_->pathOf(numberedId(1)).value()));
    EXPECT_EQ(cache_->read(numberedId(1)).error().fault, FileFault::notFound);
    EXPECT_EQ(held(), Ids{2});
    EXPECT_EQ(cache_->bytes(), 100U);
    start();
    EXPECT_EQ(disk_.listFiles(folder_)->size(), 3U) << "a picture, the order, and what is not ours";
    failAt("listFiles", FileFault::denied);
    start();
    EXPECT_EQ(cache_->fault()->fault, FileFault::denied);
}

} // namespace
} // namespace lumaro
