// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Data/Places/PlacesData.h"
#include "Lumaro/App/AppControl.h"
#include "LumaroCore/Support/Wire.h"
#include "Tests/Model/AppFixture.h"
#include "Tests/Support/ScratchFolder.h"

#include <list>

namespace lumaro {

// Made where the requests get their JSON.
extern template std::expected<std::string, EncodeError> Wire::encode<BoardRequest>(const BoardRequest& value);
extern template std::expected<BoardAnswer, DecodeError> Wire::decode<BoardAnswer>(std::string_view text);

/// The application of one person, and scripts that ask it at its socket. Needs Qt's loop to run.
class AskedApplication : public AppFixture {
public:
    using Verb = decltype(BoardRequest::Verb::value);

    AskedApplication() : control_(AppControl::listen(path(), *app, places_, nullptr).value()) {
        app->onNews([this](const AppNews&) { control_->answerReady(); });
    }
    ~AskedApplication() { app->onNews(nullptr); }
    AskedApplication(const AskedApplication&) = delete;
    AskedApplication& operator=(const AskedApplication&) = delete;

    /// Nothing until it is answered.
    std::optional<BoardAnswer>& ask(Verb verb) {
        auto& one = asked_.emplace_back();
        const auto line = Wire::encode(BoardRequest{{std::move(verb)}, 5}).value();
        one.call.emplace(path(), line, Seconds{20}, [&one](const LocalSocketCall::Answer& text) {
            one.answer = Wire::decode<BoardAnswer>(text.value_or("")).value_or(BoardAnswer{-1, "", "no answer"});
        });
        return one.answer;
    }
    /// The room's board is this one, and it is when the test says.
    void goOnBoardWith(Board board, Instant at) {
        clock.shift(at - clock.now());
        goOnBoard();
        rooms.say(ServerMessage::Welcome{PartnerID::a, std::move(board), PartnerSet::both(), {}, PartnerSet::both()});
    }

private:
    struct Asked {
        std::optional<BoardAnswer> answer;
        std::optional<LocalSocketCall> call;
    };

    std::string path() const { return folder_.file("app.socket"); }

    ScratchFolder folder_;
    PlaceTable places_ = PlaceTable::open(placesData()).value();
    std::unique_ptr<AppControl> control_;
    std::list<Asked> asked_;
};

} // namespace lumaro
