// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/MediaCache.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/Plane.h"

#include <QtGui/QImage>

#include <functional>
#include <map>
#include <memory>
#include <set>

namespace lumaro {

/// Decoded pictures, no larger than views want them. Decoding is done in the background; what is asked for too early is
/// null, and `arrived` tells when to ask again. Used on the main thread.
class PictureStore {
public:
    /// Both outlive the store.
    PictureStore(MediaCache& cache, BackgroundRunner& background) : cache_(cache), background_(background) {}

    void onArrival(std::function<void()> arrived) { arrived_ = std::move(arrived); }

    /// The picture, for a place of that many pixels; a smaller one as long as that is all there is.
    QImage picture(const UUID& id, Size pixels);
    /// Lets go of what is not among these.
    void keepOnly(const std::set<UUID>& ids);

private:
    struct Entry {
        QImage picture;
        int side = 0; ///< the longest side that was asked for
        std::unique_ptr<BackgroundRunner::Task> decoding;
    };

    void decode(const UUID& id, Entry& entry);

    MediaCache& cache_;
    BackgroundRunner& background_;
    std::function<void()> arrived_;
    std::map<UUID, Entry> entries_;
};

} // namespace lumaro
