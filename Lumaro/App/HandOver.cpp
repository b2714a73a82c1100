// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/HandOver.h"

#include "LumaroControl/BoardAnswer.h"
#include "LumaroControl/BoardRequest.h"
#include "LumaroControl/ProfileSocket.h"
#include "LumaroCore/Support/Wire.h"
#include "Platform/Qt/LocalSocket.h"

#include <QtCore/QEventLoop>

namespace lumaro {
namespace {

constexpr Seconds patience{5};

bool handOverRequest(const std::string& profile, const BoardRequest& request) {
    const auto line = Wire::encode(request);
    if (!line) return false;
    QEventLoop loop;
    bool isTaken = false;
    const LocalSocketCall call{profile + "/" + std::string{ProfileSocket::ofApplication}, *line, patience,
                               [&](const LocalSocketCall::Answer& text) {
                                   const auto answer =
                                       text ? Wire::decode<BoardAnswer>(*text) : std::unexpected(DecodeError{});
                                   isTaken = answer && answer->status == 0;
                                   loop.quit();
                               }};
    loop.exec();
    return isTaken;
}

} // namespace

bool handOver(const std::string& profile, const std::optional<std::string>& link) {
    return handOverRequest(profile, BoardRequest{.verb = {BoardRequest::Open{link}}, .wait = 0});
}

bool handOverQuickNote(const std::string& profile) {
    return handOverRequest(profile, BoardRequest{.verb = {BoardRequest::QuickNote{}}, .wait = 0});
}

} // namespace lumaro
