// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "LumaroControl/BoardAnswer.h"
#include "LumaroControl/EditRequest.h"
#include "LumaroCore/Places/PlaceTable.h"
#include "Platform/Qt/LocalSocket.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// Does what scripts and tests ask of the application over a socket of its profile: a line of `BoardRequest`, answered
/// by a line of `BoardAnswer`. An edit is answered once it is on disk, or could not be put there; a pairing once it has
/// come to its end. What needs a board waits until it is known which one that is, and what its outbox holds.
class AppControl {
public:
    /// Requests that wait for an answer at once; far more than the scripts of one person ask. Others are told to come
    /// again.
    static constexpr std::size_t maxWaiting = 256;

    /// Listens at `path`. Model and table outlive the control. `openBoard` shows the board's window; none where there
    /// are no windows. The error is the system's words.
    [[nodiscard]] static std::expected<std::unique_ptr<AppControl>, std::string>
    listen(const std::string& path, AppModel& app, const PlaceTable& places, std::function<void()> openBoard);

    AppControl(const AppControl&) = delete;
    AppControl& operator=(const AppControl&) = delete;
    ~AppControl() = default;

    /// Whoever listens to `AppModel::onNews` calls this: what was waited for may have come about.
    void answerReady();

private:
    /// The answer, once there is one.
    using Outcome = std::function<std::optional<BoardAnswer>()>;
    struct Waiting {
        Outcome outcome;
        LocalSocketServer::Reply reply;
    };

    AppControl(AppModel& app, const PlaceTable& places, std::function<void()> openBoard)
        : app_(app), places_(places), openBoard_(std::move(openBoard)) {}

    struct Deferred {
        BoardRequest request;
        LocalSocketServer::Reply reply;
    };

    void take(const std::string& line, LocalSocketServer::Reply reply);
    bool mustWait(const BoardRequest& request) const;
    void start(const BoardRequest& request, LocalSocketServer::Reply reply);
    Outcome begin(const BoardRequest& request);
    template <EditRequest Request>
    Outcome answer(const Request& request) {
        return carriedOut(verbOf(request, app_.board()));
    }
    Outcome answer(const BoardRequest::Undo&);
    Outcome answer(const BoardRequest::Redo&);
    Outcome answer(const BoardRequest::Show& show);
    Outcome answer(const BoardRequest::Pending&);
    Outcome answer(const BoardRequest::Status&);
    Outcome answer(const BoardRequest::Start& start);
    Outcome answer(const BoardRequest::Join& join);
    Outcome answer(const BoardRequest::Code&);
    Outcome answer(const BoardRequest::Link&);
    Outcome answer(const BoardRequest::Leave&);
    Outcome answer(const BoardRequest::Secrets& secrets);
    Outcome answer(const BoardRequest::UnlockKeyring&);
    Outcome answer(const BoardRequest::QuickNote& note);
    Outcome answer(const BoardRequest::Open& open);
    Outcome answer(const BoardRequest::Presence& seen);
    Outcome answer(const BoardRequest::Listening& listening);
    Outcome answer(const BoardRequest::Place& place);
    Outcome answer(const BoardRequest::Server& server);

    Outcome carriedOut(const AskedVerb& verb);
    Outcome takenBack(const EditorAct& act);
    /// Answers by the fate of these batches alone.
    Outcome stored(std::vector<UUID> batches, std::string out);
    Outcome paired();
    EditorModel& editor() { return app_.editor(); }

    AppModel& app_;
    const PlaceTable& places_;
    std::function<void()> openBoard_;
    std::unique_ptr<LocalSocketServer> server_;
    std::list<Waiting> waiting_;
    std::list<Deferred> deferred_; ///< in the order they came
};

} // namespace lumaro
