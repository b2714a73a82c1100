// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

#include <functional>
#include <memory>
#include <utility>

namespace lumaro {

/// A picture that an item shows, as a value that copies share. Its pixels are needed only while the item is painted:
/// whoever keeps them may let them go afterwards, and brings them back when they are wanted. On the main thread, or
/// while it waits.
class ItemPicture {
public:
    /// Where the keeper puts the pixels, and is asked for them.
    struct Place {
        QImage pixels;
        std::function<void()> wanted;
    };

    /// None, or not here yet.
    ItemPicture() = default;
    /// One whose pixels stay.
    ItemPicture(QImage pixels) {
        if (!pixels.isNull()) place_ = std::make_shared<const Place>(std::move(pixels), nullptr);
    }
    /// The picture at that place; other `version`s of it look different.
    ItemPicture(std::shared_ptr<const Place> place, int version) : place_(std::move(place)), version_(version) {}

    bool isNull() const { return place_ == nullptr; }
    /// It is there, but its pixels are not.
    bool isAsleep() const { return place_ && place_->pixels.isNull(); }
    /// Null unless they are there.
    QImage pixels() const { return place_ ? place_->pixels : QImage{}; }
    /// Asks for pixels that are not there; they come with another version.
    void want() const {
        if (isAsleep() && place_->wanted) place_->wanted();
    }

    bool operator==(const ItemPicture&) const = default;

private:
    std::shared_ptr<const Place> place_;
    int version_ = 0;
};

} // namespace lumaro
