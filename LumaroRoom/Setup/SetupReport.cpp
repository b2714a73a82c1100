// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Setup/SetupReport.h"

#include "LumaroCore/Support/OneLine.h"

#include <chrono>
#include <string_view>
#include <utility>

namespace lumaro {
namespace {

constexpr int unauthorized = 401;
constexpr int upgradeRequired = 426;
constexpr int badGateway = 502;
constexpr int gatewayTimeout = 504;
// A sentence may hold what a server sent.
constexpr std::size_t longestSentence = 600;

bool hasCode(const SetupAnswer& answer, std::string_view code) {
    return answer.body.find("\"code\":\"" + std::string{code} + "\"") != std::string::npos;
}

bool isRoom(const SetupAnswer& answer) {
    return answer.status == upgradeRequired && hasCode(answer, "upgrade_required");
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '%' && i + 2 < text.size();
        const int high = isEscape ? hexDigit(text[i + 1]) : -1;
        const int low = isEscape ? hexDigit(text[i + 2]) : -1;
        if (high < 0 || low < 0) {
            decoded.push_back(text[i]);
            continue;
        }
        decoded.push_back(static_cast<char>(high * 16 + low));
        i += 2;
    }
    return decoded;
}

// The server in the link of the page's button; none when the page has no such button.
std::optional<std::string> publicURLIn(std::string_view page) {
    constexpr std::string_view before = "lumaro://join-invite?i=check-setup&amp;s=";
    const auto start = page.find(before);
    if (start == std::string_view::npos) return std::nullopt;
    page.remove_prefix(start + before.size());
    return percentDecoded(page.substr(0, page.find('"')));
}

std::string baseOf(const Url& url) {
    auto base = url.origin() + url.target.substr(0, url.target.find('?'));
    while (base.ends_with('/')) base.pop_back();
    return base;
}

std::string_view wordsOf(CertificateFault::Kind kind) {
    switch (kind) {
    case CertificateFault::Kind::noTls: return "no secure connection comes about";
    case CertificateFault::Kind::otherName: return "the certificate is for another name";
    case CertificateFault::Kind::expired: return "the certificate has expired";
    case CertificateFault::Kind::notYet: return "the certificate is not valid yet";
    case CertificateFault::Kind::unknownAuthority:
        return "the certificate is by nobody whom this computer knows, or comes without its chain";
    }
    std::unreachable();
}

std::string remedyOf(CertificateFault::Kind kind, const Url& asked) {
    switch (kind) {
    case CertificateFault::Kind::noTls:
        return "look whether port " + std::to_string(asked.port) + " is the one that your proxy speaks TLS on.";
    case CertificateFault::Kind::otherName: return "get a certificate for " + asked.host + ".";
    case CertificateFault::Kind::expired:
        return "renew it, and have your proxy read the new one (a room that has it by --tls-cert: start it again).";
    case CertificateFault::Kind::notYet: return "look at the clocks of the server and of this computer.";
    case CertificateFault::Kind::unknownAuthority:
        return "have your proxy send the whole chain (\"fullchain.pem\"); with an authority of your own, make it known "
               "to each computer.";
    }
    std::unreachable();
}

/// Adds to a report what one part of a sight tells.
struct Judge {
    const SetupSight& sight;
    SetupReport report;

    void found(SetupFault fault, std::string sentence, std::string remedy) {
        report.findings.push_back(
            {fault, onOneLine(std::string_view{sentence}.substr(0, longestSentence)), onOneLine(remedy)});
    }

    // Whether there is a room to say more of.
    bool reachesRoom();
    bool reachesServer();
    void judgeOtherServer();
    void judgeUpgrade();
    void judgePublicURL();
    void judgeClock();
    void judgeHealth();
};

bool Judge::reachesServer() {
    const auto& asked = sight.asked;
    if (!sight.addresses) {
        found(SetupFault::noName, asked.host + " has no address (" + sight.addresses.error() + ").",
              "give that name an A or AAAA record with your server's address; a new one may take an hour to be known.");
        return false;
    }
    std::string places;
    for (const auto& address : *sight.addresses) places.append(places.empty() ? "" : ", ").append(address);
    report.goodSigns.push_back(asked.host + " is " + places);
    if (sight.unreachable) {
        found(SetupFault::notReachable,
              "nothing answers at " + asked.host + " port " + std::to_string(asked.port) + " (" + *sight.unreachable +
                  ").",
              "start your proxy, and let port " + std::to_string(asked.port) +
                  " through the server's firewall and the router before it.");
        return false;
    }
    if (sight.untrusted) {
        found(SetupFault::certificate,
              std::string{wordsOf(sight.untrusted->kind)} + " (" + sight.untrusted->words + ").",
              remedyOf(sight.untrusted->kind, asked));
        return false;
    }
    if (asked.isSecure) {
        report.goodSigns.emplace_back("its certificate is good");
    } else {
        report.remarks.emplace_back("this is http: whoever is on the way between you can read your board.");
    }
    return true;
}

// Something answers, and it is no room.
void Judge::judgeOtherServer() {
    const auto& answer = *sight.plain;
    if (!answer.location.empty()) {
        found(SetupFault::notARoom, "the server sends elsewhere, to " + answer.location + ".",
              "use the URL that it sends to: applications do not follow.");
    } else if (answer.status >= badGateway && answer.status <= gatewayTimeout) {
        found(SetupFault::noRoomBehind,
              "the proxy is there, and no room behind it (status " + std::to_string(answer.status) + ").",
              "look whether lumaro-room runs (systemctl status lumaro-room), and whether the proxy passes on to the "
              "address that its --listen has.");
    } else {
        found(SetupFault::notARoom,
              "a server answers there, and it is no room (status " + std::to_string(answer.status) + ").",
              "look at the name and the path of the URL, and at what the proxy passes on: it keeps the whole path.");
    }
}

bool Judge::reachesRoom() {
    if (!reachesServer()) return false;
    if (!sight.plain) {
        found(SetupFault::notReachable,
              "the server takes the connection and does not answer (" + sight.plain.error() + ").",
              "look at the log of the proxy; an http URL on a port for https looks like this, too.");
        return false;
    }
    if (!isRoom(*sight.plain)) {
        judgeOtherServer();
        return false;
    }
    report.goodSigns.emplace_back("there is a room");
    return true;
}

void Judge::judgeUpgrade() {
    if (sight.upgraded && sight.upgraded->status == unauthorized && hasCode(*sight.upgraded, "unauthorized")) {
        report.goodSigns.emplace_back("WebSockets come through to it");
        return;
    }
    const auto seen = sight.upgraded ? "status " + std::to_string(sight.upgraded->status) : sight.upgraded.error();
    found(SetupFault::noUpgrade, "WebSockets do not come through to the room (" + seen + ").",
          "have the proxy speak HTTP/1.1 to the room and pass on \"Upgrade\" and \"Connection\"; "
          "docs/running-a-room.md has the lines for nginx and Caddy.");
}

void Judge::judgePublicURL() {
    const auto link = sight.page ? publicURLIn(sight.page->body) : std::nullopt;
    if (!link) {
        report.remarks.emplace_back("what its invites begin with could not be told: the download page does not say.");
        return;
    }
    const auto named = Url::parse(*link);
    const auto wanted = baseOf(sight.asked);
    if (named && baseOf(*named) == wanted) {
        report.goodSigns.push_back("its invites begin with " + wanted);
        return;
    }
    found(SetupFault::wrongPublicURL, "its invites begin with " + *link + ", where you asked for " + wanted + ".",
          "set LUMARO_ROOM_PUBLIC_URL=" + wanted +
              " in /etc/lumaro-room.conf and start the room again, or use that URL.");
}

void Judge::judgeClock() {
    const auto& date = sight.plain->date;
    if (!date) {
        report.remarks.emplace_back("what time it has could not be told: its answers have no date.");
        return;
    }
    using namespace std::chrono;
    const auto apart = duration_cast<seconds>(sight.now - *date);
    if (abs(apart) <= clockTolerance) {
        report.goodSigns.emplace_back("its clock and yours agree");
        return;
    }
    found(SetupFault::clockOff,
          "the server's clock is " + std::to_string(abs(apart).count()) + " seconds " +
              (apart.count() > 0 ? "behind" : "ahead of") + " this computer's.",
          "set whichever is wrong, best by the network (timedatectl set-ntp true).");
}

void Judge::judgeHealth() {
    constexpr int unavailable = 503;
    if (!sight.health || sight.health->status != unavailable) return;
    found(SetupFault::unwell, "the room is there, and cannot use its database.",
          "look at the room's log (journalctl -u lumaro-room), at the disk's free space, and run lumaro-room check.");
}

} // namespace

SetupReport judge(const SetupSight& sight) {
    Judge judge{sight, {}};
    if (judge.reachesRoom()) {
        judge.judgeUpgrade();
        judge.judgePublicURL();
        judge.judgeClock();
        judge.judgeHealth();
    }
    return std::move(judge.report);
}

std::string SetupReport::text() const {
    std::string lines;
    for (const auto& sign : goodSigns) lines.append("good   ").append(onOneLine(sign)).append("\n");
    for (const auto& remark : remarks) lines.append("note   ").append(onOneLine(remark)).append("\n");
    for (const auto& finding : findings) {
        lines.append("wrong  ").append(finding.sentence).append("\n       ").append(finding.remedy).append("\n");
    }
    if (findings.empty()) lines.append("people can meet here.\n");
    return lines;
}

} // namespace lumaro
