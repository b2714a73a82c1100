// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "LumaroControl/BoardRequest.h"
#include "Platform/Qt/LocalSocket.h"

#include <expected>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>

namespace lumaro {

/// Does what scripts and tests ask of the application over a socket of its profile: a line of `BoardRequest`, answered
/// by a line of `BoardAnswer`. An edit is answered once it is on disk, a pairing once it has come to its end.
class AppControl {
public:
    /// Listens at `path`. The model outlives the control. `openBoard` shows the board's window; none where there are no
    /// windows. The error is the system's words.
    [[nodiscard]] static std::expected<std::unique_ptr<AppControl>, std::string>
    listen(const std::string& path, AppModel& app, std::function<void()> openBoard);

    AppControl(const AppControl&) = delete;
    AppControl& operator=(const AppControl&) = delete;
    ~AppControl() = default;

    /// Whoever listens to `AppModel::onNews` calls this: what was waited for may have come about.
    void look();

private:
    /// The answer, once there is one.
    using Outcome = std::function<std::optional<BoardAnswer>()>;
    struct Waiting {
        Outcome outcome;
        LocalSocketServer::Reply reply;
    };

    AppControl(AppModel& app, std::function<void()> openBoard) : app_(app), openBoard_(std::move(openBoard)) {}

    void take(const std::string& line, LocalSocketServer::Reply reply);
    Outcome begin(const BoardRequest& request);
    Outcome answer(const BoardRequest::PutUp& put);
    Outcome answer(const BoardRequest::Move& move);
    Outcome answer(const BoardRequest::Turn& turn);
    Outcome answer(const BoardRequest::Resize& resize);
    Outcome answer(const BoardRequest::TakeDown& gone);
    Outcome answer(const BoardRequest::Paint& paint);
    Outcome answer(const BoardRequest::Undo&);
    Outcome answer(const BoardRequest::Redo&);
    Outcome answer(const BoardRequest::Show& show);
    Outcome answer(const BoardRequest::Pending&);
    Outcome answer(const BoardRequest::Status&);
    Outcome answer(const BoardRequest::Start& start);
    Outcome answer(const BoardRequest::Join& join);
    Outcome answer(const BoardRequest::Code&);
    Outcome answer(const BoardRequest::Leave&);
    Outcome answer(const BoardRequest::Secrets& secrets);
    Outcome answer(const BoardRequest::Unlock&);
    Outcome answer(const BoardRequest::QuickNote& note);
    Outcome answer(const BoardRequest::Open& open);
    Outcome answer(const BoardRequest::Presence& seen);

    Outcome edited(std::expected<void, EditorFault> done, std::string out = "");
    Outcome onItem(const std::string& prefix, const std::function<EditorModel::Done(const UUID&)>& edit);
    Outcome inHand(const std::string& prefix, const std::function<EditorModel::Done()>& change);
    Outcome paired();
    EditorModel& editor() { return app_.editor(); }

    AppModel& app_;
    std::function<void()> openBoard_;
    std::unique_ptr<LocalSocketServer> server_;
    std::list<Waiting> waiting_;
};

} // namespace lumaro
