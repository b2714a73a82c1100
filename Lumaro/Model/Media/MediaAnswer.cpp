// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Media/MediaAnswer.h"

#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroCore/Protocol/ServerErrorCode.h"
#include "LumaroCore/Support/Wire.h"

namespace lumaro::MediaAnswer {

Verdict verdictOn(const HttpClient::Answer& answer) {
    if (!answer) return Verdict::notNow;
    const int status = answer->status;
    if (answer->isSuccess()) return Verdict::good;
    if (status == 401 || status == 403) return Verdict::badToken;
    const bool isItsOwnFault = status >= 400 && status < 500 && status != 408 && status != 429;
    return isItsOwnFault ? Verdict::notThis : Verdict::notNow;
}

std::optional<MediaFault> lastingFaultIn(const HttpClient::Answer& answer) {
    if (!answer) return std::nullopt;
    switch (answer->status) {
    case 400: return MediaFault::refused;
    case 413: return MediaFault::tooLarge;
    case 415: return MediaFault::notAPicture;
    case 429: {
        const auto error = Wire::decode<ServerError>(answer->body);
        const bool isFull = error && error->code == ServerErrorCode::limitExceeded;
        return isFull ? std::optional{MediaFault::roomFull} : std::nullopt;
    }
    default: return std::nullopt;
    }
}

std::string reasonIn(const HttpClient::Answer& answer) {
    return answer ? "the server answered " + std::to_string(answer->status) : answer.error().message;
}

} // namespace lumaro::MediaAnswer
