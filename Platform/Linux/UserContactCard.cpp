// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/UserContactCard.h"

#include <QDir>
#include <QFileInfo>

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace lumaro {
namespace {

// "&" stands for the login name with a capital letter.
std::string fullNameOf(const UserContactCard::Account& account) {
    std::string login = account.login;
    if (!login.empty() && login.front() >= 'a' && login.front() <= 'z') login.front() -= 'a' - 'A';
    std::string name;
    for (const char c : std::string_view{account.gecos}.substr(0, account.gecos.find(','))) {
        name.append(c == '&' ? std::string_view{login} : std::string_view{&c, 1});
    }
    return QString::fromStdString(name).trimmed().toStdString();
}

} // namespace

UserContactCard::Account UserContactCard::ownAccount() {
    std::array<char, 16384> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the call
    passwd entry{};
    passwd* found = nullptr;
    const auto home = QDir::homePath().toStdString();
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) {
        return {.login = {}, .gecos = {}, .home = home};
    }
    return {.login = entry.pw_name, .gecos = entry.pw_gecos, .home = home};
}

OwnCard UserContactCard::ownCard() {
    OwnCard card{.fullName = fullNameOf(account_), .picturePath = {}};
    const auto candidates = {account_.home + "/.face", "/var/lib/AccountsService/icons/" + account_.login};
    const auto picture = std::ranges::find_if(candidates, [](const std::string& path) {
        const QFileInfo file{QString::fromStdString(path)};
        return file.isFile() && file.isReadable();
    });
    if (picture != candidates.end()) card.picturePath = *picture;
    return card;
}

} // namespace lumaro
