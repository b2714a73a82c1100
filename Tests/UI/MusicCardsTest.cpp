// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Board/SpokenItem.h"
#include "Tests/UI/LiveCardsFixture.h"

#include <limits>

namespace lumaro {
namespace {

using MusicCardsTest = LiveCardsFixture;

TEST_F(MusicCardsTest, theArmComesInWithTheTrackAndRestsWhereItIsNotKnown) {
    partnerPlays(0, 64'000);
    EXPECT_EQ(record().armStep, 0);
    now += 32s;
    EXPECT_EQ(record().armStep, 32);
    now += 40s;
    EXPECT_EQ(record().armStep, MusicFace::armSteps);
    partner.nowPlaying->isPlaying = false;
    EXPECT_EQ(record().armStep, 0);
    EXPECT_EQ(recordChanges(), std::nullopt);
    partnerPlays(70'000, 0);
    EXPECT_LT(record().armStep, MusicFace::armSteps / 3);
    EXPECT_GT(record().armStep, 0);
    EXPECT_EQ(recordChanges(), std::nullopt);
}

TEST_F(MusicCardsTest, aTrackIsOverItsLengthAndAMinuteAfterTheLastNews) {
    const auto heardAt = now;
    partnerPlays(60'000, 64'000);
    now += 10s;
    EXPECT_EQ(recordChanges(), heardAt + 124s);
    now = heardAt + 124s - 1ms;
    EXPECT_EQ(record().state, MusicFace::State::playing);
    now = heardAt + 124s;
    EXPECT_EQ(record().words, "nothing playing");
    EXPECT_EQ(recordChanges(), std::nullopt);
    own.nowPlaying = partner.nowPlaying;
    EXPECT_EQ(record(PartnerID::a).words, "nothing playing");
    own.nowPlaying->sampledAt = now;
    EXPECT_EQ(record(PartnerID::a).state, MusicFace::State::playing);
}

TEST_F(MusicCardsTest, numbersOfAStrangersDeviceAreShownAsSomeNumber) {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    for (const auto progress : {least, std::int64_t{-1}, std::int64_t{1}, most}) {
        for (const auto duration : {least, std::int64_t{0}, std::int64_t{1}, most}) {
            for (const auto sampledAt : {Instant::min(), now, Instant::max()}) {
                partnerPlays(progress, duration);
                partner.nowPlaying->sampledAt = sampledAt;
                EXPECT_GE(record().armStep, 0);
                EXPECT_LE(record().armStep, MusicFace::armSteps);
                EXPECT_GT(recordChanges().value_or(Instant::max()), now);
                EXPECT_LT(trackWords({PartnerID::b}, live()).position.size(), 32);
            }
        }
    }
}

TEST_F(MusicCardsTest, ownMusicIsOfferedToBeSharedUntilItIsAndEachCardHasItsPersonsCover) {
    music.musicConsent = Consent::notAsked;
    EXPECT_EQ(record(PartnerID::a).words, "share what i'm listening to");
    EXPECT_EQ(record(PartnerID::b).words, "nothing playing");
    music.musicConsent = Consent::yes;
    EXPECT_EQ(record(PartnerID::a).words, "nothing playing");
    partnerPlays(0, 64'000);
    own.nowPlaying = partner.nowPlaying;
    UUID asked;
    const LiveContext::Picture ask = [&](const UUID& id, Size) {
        asked = id;
        return ItemPicture{QImage{1, 1, QImage::Format_RGB32}};
    };
    picture = &ask;
    EXPECT_TRUE(record(PartnerID::b).cover.isNull());
    covers.ownCover = UUID::parse("00000000-0000-4000-8000-00000000000a");
    covers.partnerCover = UUID::parse("00000000-0000-4000-8000-00000000000b");
    for (const auto& [slot, cover] : {std::pair{PartnerID::a, covers.ownCover}, {PartnerID::b, covers.partnerCover}}) {
        EXPECT_FALSE(record(slot).cover.isNull());
        EXPECT_EQ(asked, cover);
    }
}

TEST_F(MusicCardsTest, namesFromAPlayerAreOnOneLineAndCutBeforeFontsSeeThem) {
    partnerPlays(0, 64'000);
    partner.nowPlaying->title = "a\n\tb";
    partner.nowPlaying->artist = std::string(10'000, 'x');
    EXPECT_EQ(record().title, "a b");
    EXPECT_EQ(record().artist, QString(200, QLatin1Char{'x'}) + QStringLiteral("…"));
    partner.nowPlaying->title = "e";
    for (int i = 0; i < 5'000; ++i) partner.nowPlaying->title += "\u0301";
    EXPECT_LE(record().title.size(), 801);
}

TEST_F(MusicCardsTest, aTrackIsToldInFullAndSpoken) {
    const auto card = item(NowPlayingSlotPayload{PartnerID::b});
    EXPECT_FALSE(trackWords({PartnerID::b}, live()).isThere);
    partnerPlays(83'900, 225'000);
    EXPECT_EQ(trackWords({PartnerID::b}, live()).position, "1:23 of 3:45");
    EXPECT_EQ(spoken(card, faceOf(card, live()), live()),
              "bo's music, 'harbour lights', the paper boats, playing, from bo, pinned today");
    partner.nowPlaying->isPlaying = false;
    partner.nowPlaying->durationMs = 0;
    partner.nowPlaying->progressMs = 3'723'000;
    EXPECT_EQ(trackWords({PartnerID::b}, live()).position, "1:02:03 · paused");
    EXPECT_EQ(spoken(card, faceOf(card, live()), live()),
              "bo's music, 'harbour lights', the paper boats, paused, from bo, pinned today");
    const auto mine = item(NowPlayingSlotPayload{PartnerID::a});
    EXPECT_EQ(spoken(mine, faceOf(mine, live()), live()), "your music, nothing playing, from bo, pinned today");
}

} // namespace
} // namespace lumaro
