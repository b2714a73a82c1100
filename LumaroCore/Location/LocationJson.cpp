// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Location/ChosenPlace.h"
#include "LumaroCore/Location/PlaceBook.h"
#include "LumaroCore/Support/JsonCodec.h"

namespace lumaro {

template std::expected<PlaceBook, DecodeError> Wire::decode<PlaceBook>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<PlaceBook>(const PlaceBook& value);
template std::expected<ChosenPlace, DecodeError> Wire::decode<ChosenPlace>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<ChosenPlace>(const ChosenPlace& value);

} // namespace lumaro
