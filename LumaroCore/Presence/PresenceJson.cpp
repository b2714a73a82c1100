// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Here.h"
#include "LumaroCore/Presence/NowPlaying.h"
#include "LumaroCore/Presence/Weather.h"
#include "LumaroCore/Support/JsonCodec.h"

namespace lumaro {

template std::expected<NowPlaying, DecodeError> Wire::decode<NowPlaying>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<NowPlaying>(const NowPlaying& value);
template std::expected<Weather, DecodeError> Wire::decode<Weather>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<Weather>(const Weather& value);
template std::expected<Here, DecodeError> Wire::decode<Here>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<Here>(const Here& value);

} // namespace lumaro
