// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/RouteAnswers.h"

#include "LumaroCore/Support/JsonCodec.h"

namespace lumaro {

template std::expected<std::string, EncodeError> Wire::encode<PartnerAnswer>(const PartnerAnswer& value);

} // namespace lumaro
