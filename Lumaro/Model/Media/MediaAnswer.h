// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Media/MediaFault.h"
#include "LumaroCore/Support/HttpClient.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumaro::MediaAnswer {

/// What the room's answer to a request for or with a picture means for that picture, and for others.
enum class Verdict : std::uint8_t {
    good,
    notNow,   ///< no answer, or a failure that may pass: try again later
    notThis,  ///< the room does not have this picture, or does not take it
    badToken, ///< no picture is tried until the token is known to be good
};

Verdict verdictOn(const HttpClient::Answer& answer);
/// Of the refusals of a picture that was sent, the ones that no later attempt changes.
std::optional<MediaFault> lastingFaultIn(const HttpClient::Answer& answer);
/// Why it was not good, for the log.
std::string reasonIn(const HttpClient::Answer& answer);

} // namespace lumaro::MediaAnswer
