// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Media/MediaCache.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/Plane.h"
#include "LumaroCore/Support/Sleeper.h"
#include "Widgets/Items/ItemPicture.h"

#include <functional>
#include <map>
#include <memory>
#include <set>

namespace lumaro {

/// The pictures of the board's items, no larger than views want them. They are decoded in the background: one that is
/// not here yet is null, and `arrived` tells when to ask again. Their pixels are freed once there was time to
/// paint them, for they are painted seldom and take far more memory than the file. Used on the main thread.
class PictureStore {
public:
    /// All outlive the store.
    struct Ports {
        MediaCache& cache;
        BackgroundRunner& background;
        Sleeper& sleeper;
    };

    explicit PictureStore(Ports ports) : ports_(ports) {}
    PictureStore(const PictureStore&) = delete;
    PictureStore& operator=(const PictureStore&) = delete;
    ~PictureStore() { keepOnly({}); }

    void onArrival(std::function<void()> arrived) { arrived_ = std::move(arrived); }

    /// The picture, for a place of that many pixels; a smaller one as long as that is all there is.
    ItemPicture picture(const UUID& id, Size pixels);
    /// Lets go of what is not among these.
    void keepOnly(const std::set<UUID>& ids);

private:
    struct Entry {
        std::shared_ptr<ItemPicture::Place> place;
        int version = 0; ///< 0 before the first
        int side = 0;    ///< the longest side that was asked for
        std::unique_ptr<BackgroundRunner::Task> decoding;
    };

    Entry& entryOf(const UUID& id);
    void decode(const UUID& id, Entry& entry);
    void decoded(const UUID& id, QImage pixels);
    void sleep();

    Ports ports_;
    std::function<void()> arrived_;
    std::map<UUID, Entry> entries_;
    std::unique_ptr<Sleeper::Wait> tiring_;
};

} // namespace lumaro
