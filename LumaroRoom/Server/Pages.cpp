// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Pages.h"

#include "LumaroCore/Pairing/InviteLink.h"
#include "LumaroRoom/Pairing/Secrets.h"

#include <array>
#include <cstdint>

namespace lumaro {
namespace {

constexpr std::string_view style = R"(
:root{color-scheme:light dark;--paper:#fff9ec;--wall:#f6e7c8;--ink:#43362a;--soft:#8a7763;--thread:#d2453b}
@media (prefers-color-scheme:dark){:root{--paper:#2d2620;--wall:#1c1713;--ink:#f4e8d8;--soft:#b7a48f;--thread:#ee6a5f}}
*{box-sizing:border-box}
body{margin:0;min-height:100vh;display:grid;place-items:center;padding:24px;background:var(--wall);color:var(--ink);
font:17px/1.55 ui-rounded,"SF Pro Rounded","Nunito","Cantarell",system-ui,sans-serif}
main{position:relative;max-width:27em;padding:44px 40px 34px;background:var(--paper);border-radius:6px;
box-shadow:0 1px 2px #0002,0 14px 40px #0002;transform:rotate(-.6deg);overflow-wrap:anywhere}
main::before{content:"";position:absolute;top:-9px;left:50%;width:20px;height:20px;margin-left:-10px;border-radius:50%;
background:var(--thread);box-shadow:0 3px 5px #0004,inset 2px 3px 4px #fff6}
h1{margin:0 0 12px;font-size:1.5em;line-height:1.25;font-weight:650;text-wrap:balance}
p{margin:0 0 16px}
ol{margin:0 0 20px;padding-left:1.2em}
li{margin:0 0 8px}
a.go{display:block;margin:24px 0 18px;padding:13px 20px;border-radius:12px;background:var(--thread);color:#fff;
text-align:center;text-decoration:none;font-weight:600}
a.go:hover{filter:brightness(1.07)}
a.go:focus-visible{outline:3px solid var(--ink);outline-offset:3px}
.soft{color:var(--soft);font-size:.88em}
.soft a{color:inherit}
)";

std::string base64(std::string_view bytes) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto at = [&](std::size_t k) {
            return i + k < bytes.size() ? std::uint32_t{static_cast<std::uint8_t>(bytes[i + k])} : 0U;
        };
        const std::uint32_t three = at(0) << 16U | at(1) << 8U | at(2);
        for (std::size_t k = 0; k < 4; ++k) {
            text.push_back(i + k > bytes.size() ? '=' : alphabet[three >> (18 - 6 * k) & 0x3fU]);
        }
    }
    return text;
}

std::string contentPolicy() {
    const auto digest = sha256(style);
    const std::string bytes{digest.begin(), digest.end()};
    return "default-src 'none'; style-src 'sha256-" + base64(bytes) +
           "'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";
}

ServerResponse page(int status, std::string_view title, std::string_view content) {
    static const std::string policy = contentPolicy();
    std::string body = "<!doctype html><html lang=\"en\"><head><meta charset=\"utf-8\">"
                       "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\"><title>";
    body.append(title).append("</title><style>").append(style).append("</style></head><body><main>");
    body.append(content).append("</main></body></html>\n");
    return {status,
            {{"content-type", "text/html; charset=utf-8"},
             {"content-security-policy", policy},
             {"referrer-policy", "no-referrer"},
             {"x-content-type-options", "nosniff"},
             {"cache-control", "no-store"}},
            std::move(body)};
}

std::string openButton(std::string_view inviteId, std::string_view serverURL) {
    return R"(<a class="go" href=")" + escapedHtml(ownInviteLink(inviteId, serverURL)) + R"(">open our board</a>)";
}

constexpr std::string_view installSteps =
    "<ol><li>get Lumaro from whoever invited you, or from your system's software centre, and start it once.</li>"
    "<li>come back to this page and press the button: the board opens behind your icons.</li></ol>";

} // namespace

std::string escapedHtml(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&': escaped.append("&amp;"); break;
        case '<': escaped.append("&lt;"); break;
        case '>': escaped.append("&gt;"); break;
        case '"': escaped.append("&quot;"); break;
        case '\'': escaped.append("&#39;"); break;
        default: escaped.push_back(c);
        }
    }
    return escaped;
}

ServerResponse invitePage(std::string_view inviteId, std::string_view serverURL,
                          const std::optional<std::string>& inviter) {
    const std::string name = inviter && !inviter->empty() ? escapedHtml(*inviter) : "someone dear";
    return page(200, "a board for two",
                "<h1>" + name + " has put up a board for the two of you</h1>" +
                    "<p>notes, photos and small drawings, behind the icons of both your desktops.</p>" +
                    openButton(inviteId, serverURL) + R"(<p class="soft">nothing happened? <a href="/dl/)" +
                    escapedHtml(inviteId) + R"(">get Lumaro first</a>, then come back.</p>)");
}

ServerResponse goneInvitePage() {
    return page(404, "this link was replaced",
                "<h1>that link was replaced</h1><p>ask them for the new one &#128140;</p>");
}

ServerResponse downloadPage(std::string_view inviteId, std::string_view serverURL) {
    std::string content = "<h1>put Lumaro on your desktop</h1>";
    content.append(installSteps);
    // What is no id might bring a server of its own.
    content.append(isInviteId(inviteId) ? openButton(inviteId, serverURL)
                                        : "<p class=\"soft\">the button is on the invite that you were sent.</p>");
    return page(200, "get Lumaro", content);
}

} // namespace lumaro
