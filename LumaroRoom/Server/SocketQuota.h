// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace lumaro {

/// Counts open sockets by where they come from. Thread-safe; outlives its places.
class SocketQuota {
public:
    /// A socket's place, given back when it goes.
    class Place {
    public:
        Place(SocketQuota& quota, std::string origin) : quota_(&quota), origin_(std::move(origin)) {}
        Place(Place&& other) noexcept
            : quota_(std::exchange(other.quota_, nullptr)), origin_(std::move(other.origin_)) {}
        Place& operator=(Place&& other) noexcept {
            std::swap(quota_, other.quota_);
            std::swap(origin_, other.origin_);
            return *this;
        }
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place() {
            if (quota_ != nullptr) quota_->giveBack(origin_);
        }

    private:
        SocketQuota* quota_;
        std::string origin_;
    };

    explicit SocketQuota(std::size_t perOrigin) : perOrigin_(perOrigin) {}

    /// None when the origin has all its places.
    std::optional<Place> take(const std::string& origin) {
        const std::scoped_lock lock{mutex_};
        auto& count = counts_[origin];
        if (count >= perOrigin_) return std::nullopt;
        ++count;
        return std::optional<Place>{std::in_place, *this, origin};
    }

private:
    void giveBack(const std::string& origin) {
        const std::scoped_lock lock{mutex_};
        const auto place = counts_.find(origin);
        if (--place->second == 0) counts_.erase(place);
    }

    std::size_t perOrigin_;
    std::mutex mutex_;
    std::unordered_map<std::string, std::size_t> counts_;
};

} // namespace lumaro
