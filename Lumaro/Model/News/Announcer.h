// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/AppNews.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace lumaro {

/// Gathers what the parts of the application change, and tells it once for each message or act, when the state is
/// whole. On the main thread.
class Announcer {
public:
    using Listener = std::function<void(const AppNews&)>;

    /// From here to its end one message or act is dealt with; within another one it belongs to that.
    class Update {
    public:
        explicit Update(Announcer& announcer) : announcer_(announcer) { ++announcer_.updates_; }
        Update(const Update&) = delete;
        Update& operator=(const Update&) = delete;
        ~Update() { announcer_.end(); }

    private:
        Announcer& announcer_;
    };

    Announcer() = default;
    Announcer(const Announcer&) = delete;
    Announcer& operator=(const Announcer&) = delete;
    ~Announcer() = default;

    /// Called with the news of each update. It may begin updates of its own, whose news come next; it may not destroy
    /// the announcer.
    void onNews(Listener listener) { listener_ = std::move(listener); }
    /// Called before news are told, for what follows from them.
    void beforeNews(Listener complete) { complete_ = std::move(complete); }

    // Outside of an update each of these is told at once.

    void changed(AppChange change);
    void say(std::string notice);
    void askForQuickNote(std::optional<std::string> text);
    /// The partner did this.
    void did(std::vector<PartnerDeed> deeds);
    void askForBoard();

private:
    void end();

    Listener listener_;
    Listener complete_;
    AppNews news_;
    int updates_ = 0; ///< that are under way, one within the other
};

} // namespace lumaro
