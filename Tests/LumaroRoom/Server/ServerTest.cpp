// SPDX-License-Identifier: Apache-2.0
#include "Tests/LumaroRoom/Server/ServerFixture.h"

#include <cstdlib>

namespace lumaro {
namespace {

using ServerTest = ServerFixture;

const std::string png = "\x89PNG\r\n\x1a\n and its pixels";
const std::string media = "/media/6f9619ff-8b86-4d01-b42d-00cf4fc964ff";

std::string codeOf(const Reply& reply) {
    const auto error = Wire::decode<ServerError>(reply.body);
    return error ? error->code : "(" + reply.body + ")";
}

TEST_F(ServerTest, AThirdDeviceIsAskedWhoseItIs) {
    const auto couple = found();
    join(couple);
    const auto asking = asked("POST", "/joins/link", "",
                              R"({"inviteId":")" + couple.invite.inviteId + R"(","deviceId":"new","name":"Ben"})");
    const auto error = Wire::decode<ServerError>(asking.body).value();
    EXPECT_EQ(error.names, (SlotNames{"Ada", "Ben"}));
    EXPECT_EQ(error.suggested, PartnerID::b);
}

TEST_F(ServerTest, LinksNamesAndDevicesComeAndGo) {
    const auto couple = found();
    const auto ben = join(couple);
    const auto home = "/couples/" + couple.coupleId;
    const std::string invite = R"({"inviteId":")" + couple.invite.inviteId + R"("})";
    EXPECT_EQ(asked("POST", "/handoff", "", invite).body, invite);
    EXPECT_EQ(asked("PUT", home + "/names/self", ben.token, R"({"name":"Benno"})").body, "{}");
    EXPECT_NE(get(home + "/partner", couple.token).body.find("Benno"), std::string::npos);
    EXPECT_EQ(asked("DELETE", home + "/links", ben.token).status, 200);
    EXPECT_EQ(codeOf(asked("POST", "/handoff", "", invite)), "not_found");
    EXPECT_EQ(asked("POST", home + "/links", ben.token, R"({"name":"Benno"})").status, 201);
    EXPECT_EQ(asked("DELETE", home + "/partner", ben.token).status, 200);
    EXPECT_EQ(get(home + "/snapshot", couple.token).status, 401);
    EXPECT_EQ(asked("DELETE", home + "/devices/self", ben.token).status, 200);
    EXPECT_EQ(get(home + "/snapshot", ben.token).status, 401);
}

TEST_F(ServerTest, CallsWithoutAGoodTokenAreRefusedAlike) {
    const auto couple = found();
    const auto other = found();
    const auto home = "/couples/" + couple.coupleId;
    const auto refusal = get(home + "/snapshot").body;
    for (const auto& [path, token] : std::vector<std::pair<std::string, std::string>>{
             {home + "/snapshot", "lm1." + couple.coupleId + ".a.nonsense"},
             {home + "/snapshot", other.token},
             {"/couples/nosuchcouple/snapshot", couple.token},
             {home + "/weather?lat=1&lon=1", other.token},
             {home + "/window-key", other.token},
             {home + media, other.token}}) {
        const auto reply = get(path, token);
        EXPECT_EQ(reply.status, 401) << path;
        EXPECT_EQ(reply.body, refusal) << path;
    }
}

TEST_F(ServerTest, FaultyRequestsGetTheirStatus) {
    const auto couple = found();
    const auto home = "/couples/" + couple.coupleId;
    struct Case {
        std::string method, path, body;
        int status;
        std::string code;
    };
    for (const auto& [method, path, body, status, code] : std::vector<Case>{
             {"GET", "/nowhere", "", 404, "not_found"},
             {"PATCH", "/couples", "", 405, "method_not_allowed"},
             {"POST", "/couples", "{", 400, "bad_request"},
             {"POST", "/couples", R"({"deviceId":"d"})", 400, "bad_request"},
             {"POST", "/joins/link", R"({"inviteId":"aaaaaaaa","deviceId":"d","name":"n"})", 404, "invite_not_found"},
             {"GET", home + "/ws", "", 426, "upgrade_required"},
             {"GET", home + "/window-key", "", 404, "not_configured"},
             {"GET", home + "/weather?lat=91&lon=0", "", 400, "bad_request"},
             {"GET", home + media, "", 404, "not_found"},
             {"BAD METHOD", "/", "", 400, "bad_request"}}) {
        const auto reply = asked(method, path, couple.token, body);
        EXPECT_EQ(reply.status, status) << method << " " << path;
        EXPECT_EQ(codeOf(reply), code) << method << " " << path;
    }
    EXPECT_EQ(ask(port(), {.headers = {{"X-Long", std::string(20'000, 'x')}}}).status, 431);
}

TEST_F(ServerTest, MediaIsWrittenOnceAndKeptByCaches) {
    const auto couple = found();
    const auto path = "/couples/" + couple.coupleId + media;
    EXPECT_EQ(asked("PUT", path, couple.token, png).status, 201);
    EXPECT_EQ(asked("PUT", path, couple.token, png).status, 200);
    EXPECT_EQ(codeOf(asked("PUT", path, couple.token, png + "!")), "media_exists");
    const auto image = get(path, couple.token);
    EXPECT_EQ(image.body, png);
    EXPECT_EQ(image.headers.at("content-type"), "image/png");
    EXPECT_NE(image.headers.at("cache-control").find("immutable"), std::string::npos);
}

TEST_F(ServerTest, MediaKeepsToItsLimits) {
    config.limits.maxCoupleMediaBytes = 3'000'000;
    const auto couple = found();
    const auto put = [&](const std::string& id, const std::string& token, const std::string& bytes) {
        return asked("PUT", "/couples/" + couple.coupleId + "/media/" + id, token, bytes).status;
    };
    const std::string id = "6f9619ff-8b86-4d01-b42d-00cf4fc964f";
    const auto largest = png + std::string(2'097'152 - png.size(), '.');
    EXPECT_EQ(put(id + "0", couple.token, "<svg/>"), 415);
    EXPECT_EQ(put("not-a-uuid", couple.token, png), 404);
    EXPECT_EQ(put(id + "1", couple.token, largest + "."), 413);
    EXPECT_EQ(put(id + "1", "lm1.wrong.a.token", largest), 401);
    EXPECT_EQ(put(id + "1", couple.token, largest), 201);
    EXPECT_EQ(put(id + "2", couple.token, largest), 429);
}

TEST_F(ServerTest, ARequestThatNeverEndsIsCutOff) {
    config.limits.requestTime = std::chrono::milliseconds{20};
    Line line{port()};
    line.write("POST /couples HTTP/1.1\r\nContent-Length: 100\r\n\r\nslowly");
    EXPECT_EQ(line.read(1), "");
}

TEST_F(ServerTest, PagesNameTheInviterAndRunNothing) {
    const auto created = asked("POST", "/couples", "", R"({"deviceId":"d","name":"<b>\"Ada\" & co"})");
    const auto invite = Wire::decode<CreatedCouple>(created.body).value().invite.inviteId;
    const auto page = get("/for/" + invite);
    EXPECT_EQ(page.status, 200);
    EXPECT_NE(page.body.find("&lt;b&gt;&quot;Ada&quot; &amp; co"), std::string::npos);
    EXPECT_NE(page.body.find("lumaro://join-invite?i=" + invite), std::string::npos);
    EXPECT_EQ(get("/for/nosuchinvite").status, 404);
    EXPECT_NE(get("/dl/%22%3E\"><i").body.find("i=%22%3E&quot;&gt;&lt;i\""), std::string::npos);
    for (const auto& path : {"/for/" + invite, "/dl/" + invite, std::string{"/download"}}) {
        const auto shown = get(path);
        const auto policy = shown.headers.at("content-security-policy");
        EXPECT_TRUE(policy.starts_with("default-src 'none'; style-src 'sha256-")) << path;
        EXPECT_EQ(shown.body.find("<script"), std::string::npos);
    }
}

TEST_F(ServerTest, TheLogHoldsNoSecrets) {
    const auto couple = found();
    const auto ben = join(couple);
    {
        const auto held = socket(couple.coupleId, ben.token);
    }
    get("/couples/" + couple.coupleId + "/weather?lat=52.516&lon=13.377", ben.token);
    stop();
    const auto text = log.text();
    EXPECT_NE(text.find("socket opened"), std::string::npos);
    for (const auto& secret : {couple.token, ben.token, couple.coupleId, couple.invite.inviteId, std::string{"52.5"}}) {
        EXPECT_EQ(text.find(secret), std::string::npos) << secret;
    }
}

TEST_F(ServerTest, TheSameIsServedOverTls) {
    const auto certificate = folder.file("cert.pem");
    const auto key = folder.file("key.pem");
    const auto make = "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 1 -subj /CN=localhost"
                      " -keyout " +
                      key + " -out " + certificate + " 2>/dev/null";
    ASSERT_EQ(std::system(make.c_str()), 0); // NOLINT(concurrency-mt-unsafe,cert-env33-c)
    config.tls = ServerConfig::Tls{certificate, key};
    layer = Layer::tls;
    EXPECT_TRUE(server().url().starts_with("https://"));
    // Under TLS a connection stays on the shard that took it: couples on both shards are reached from either.
    for (int i = 0; i < 6; ++i) {
        const auto couple = found();
        auto ada = socket(couple.coupleId, couple.token);
        EXPECT_TRUE(ada.receiveWith(R"("type":"welcome")"));
        EXPECT_TRUE(ada.send("hb"));
        EXPECT_EQ(ada.receiveWith("hb-ack"), "hb-ack");
    }
    EXPECT_EQ(ask(port(), {.target = "/healthz"}, Layer::plain).status, 0);
}

TEST_F(ServerTest, AServerThatCannotStartSaysWhy) {
    SystemClock clock;
    SystemRandomSource random;
    ServerConfig taken;
    taken.port = port();
    ServerConfig uncertified;
    uncertified.port = 0;
    uncertified.tls = ServerConfig::Tls{"/nonexistent", "/nonexistent"};
    for (const auto& [faulty, why] : {std::pair{taken, "cannot listen"}, std::pair{uncertified, "no certificate"}}) {
        auto store = SqliteStore::open(folder.file(why), log);
        const auto server = Server::start(faulty, std::move(store.value()), {clock, random, log});
        ASSERT_FALSE(server);
        EXPECT_TRUE(server.error().starts_with(why)) << server.error();
    }
}

} // namespace
} // namespace lumaro
