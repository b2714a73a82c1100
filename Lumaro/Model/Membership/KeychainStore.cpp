// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/KeychainStore.h"

#include "LumaroCore/Support/JsonCodec.h"

#include <utility>

namespace lumaro {

template std::expected<BoardLink, DecodeError> Wire::decode<BoardLink>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<BoardLink>(const BoardLink& value);

namespace {

KeychainStore::Result<void> resultOf(SecretStatus status) {
    if (status == SecretStatus::success) return {};
    return std::unexpected(status);
}

} // namespace

ReadResult KeychainStore::read(std::string_view account) const {
    auto data = secrets_.query(addressOf(account));
    if (data) return {ReadResult::Found{std::move(*data)}};
    if (data.error() == SecretStatus::itemNotFound) return {ReadResult::Empty{}};
    return {ReadResult::Failed{data.error()}};
}

KeychainStore::Result<void> KeychainStore::save(std::string_view data, std::string_view account) {
    const auto address = addressOf(account);
    // Made anew rather than updated, so that it gets the accessibility that new items get. Whether it could be removed
    // shows in the next step.
    static_cast<void>(secrets_.remove(address));
    auto status = secrets_.add(address, data);
    if (status == SecretStatus::duplicateItem) status = secrets_.update(address, data);
    return resultOf(status);
}

KeychainStore::Result<void> KeychainStore::remove(std::string_view account) {
    const auto status = secrets_.remove(addressOf(account));
    return resultOf(status == SecretStatus::itemNotFound ? SecretStatus::success : status);
}

KeychainStore::Result<std::optional<BoardLink>> KeychainStore::readBoardLink() const {
    const auto data = secrets_.query(addressOf(KeychainAccount::boardLink));
    if (!data && data.error() != SecretStatus::itemNotFound) return std::unexpected(data.error());
    if (!data) return std::nullopt;
    auto link = Wire::decode<BoardLink>(*data);
    return link ? std::optional{std::move(*link)} : std::nullopt;
}

KeychainStore::Result<void> KeychainStore::saveBoardLink(const BoardLink& link) {
    const auto text = Wire::encode(link);
    // Its texts are no UTF-8: a room never gave out such a link.
    if (!text) return std::unexpected(SecretStatus::other);
    return save(*text, KeychainAccount::boardLink);
}

} // namespace lumaro
