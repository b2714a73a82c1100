// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppState.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace lumaro {

/// Which page stands between people and their board; `board` when none does.
enum class Stage : std::uint8_t {
    restoring,
    locked,      ///< the keychain would not open
    asksForFile, ///< there is no keychain: will a file do?
    welcome,
    makeItYours,
    bringThemOver,
    offBoard, ///< paired once, with no key to a board now
    refused,  ///< the room no longer knows this device
    board,
};

constexpr std::array<std::string_view, 9> namesOf(Stage) {
    return {"restoring",     "locked",   "asksForFile", "welcome", "makeItYours",
            "bringThemOver", "offBoard", "refused",     "board"};
}

/// An invite was opened that leads away from this computer's board, or to a server that it does not know. The names are
/// those of the partners. A plain value.
struct InviteQuestion {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(bool isAsked MEMBER isAsked)
    Q_PROPERTY(QString askedBoardName MEMBER askedBoardName)
    Q_PROPERTY(QString ownBoardName MEMBER ownBoardName)
    Q_PROPERTY(QString server MEMBER server)
    Q_PROPERTY(bool isByCode MEMBER isByCode)
    Q_PROPERTY(bool isPartnerOnOwn MEMBER isPartnerOnOwn)
    Q_PROPERTY(int items MEMBER items)

public:
    bool isAsked = false;
    QString askedBoardName; ///< of the invite's board; nobody's name where a code leads there
    QString ownBoardName;   ///< of the board that would be left; empty when there is none to leave
    QString server;         ///< the host that the invite's board is on
    bool isByCode = false;
    bool isPartnerOnOwn = false; ///< somebody else is, or was, on the board that would be left
    int items = 0;               ///< that hang on it

    bool operator==(const InviteQuestion&) const = default;
};

/// What the pages show of the application, in the words that people read. A plain value.
struct AppFace {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString stage READ stageName)
    Q_PROPERTY(bool needsPerson READ needsPerson)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(bool isOnBoard MEMBER isOnBoard)
    Q_PROPERTY(bool isOffline MEMBER isOffline)
    Q_PROPERTY(int waiting MEMBER waiting)
    Q_PROPERTY(bool isPartnerHere MEMBER isPartnerHere)
    Q_PROPERTY(bool hasPartner MEMBER hasPartner)
    Q_PROPERTY(bool isPlaceFree MEMBER isPlaceFree)
    Q_PROPERTY(QString myName MEMBER myName)
    Q_PROPERTY(QString partnerName MEMBER partnerName)
    Q_PROPERTY(bool isWorking MEMBER isWorking)
    Q_PROPERTY(bool isChoosing MEMBER isChoosing)
    Q_PROPERTY(QString firstName MEMBER firstName)
    Q_PROPERTY(QString secondName MEMBER secondName)
    Q_PROPERTY(int suggested MEMBER suggested)
    Q_PROPERTY(QUrl myPicture MEMBER myPicture)
    Q_PROPERTY(QString failure MEMBER failure)
    Q_PROPERTY(QString code MEMBER code)
    Q_PROPERTY(QString codeWorks MEMBER codeWorks)
    Q_PROPERTY(bool isCodeOver MEMBER isCodeOver)
    Q_PROPERTY(bool isMintingCode MEMBER isMintingCode)
    Q_PROPERTY(QString link MEMBER link)
    Q_PROPERTY(QString greeting MEMBER greeting)
    Q_PROPERTY(bool showsOnDesktop MEMBER showsOnDesktop)
    Q_PROPERTY(bool sharesSeen MEMBER sharesSeen)
    Q_PROPERTY(QString background MEMBER background)
    Q_PROPERTY(lumaro::InviteQuestion inviteQuestion MEMBER inviteQuestion)

public:
    Stage stage = Stage::restoring;
    QString status; ///< the line of the tray
    bool isOnBoard = false;
    bool isOffline = false; ///< on a board whose room does not answer
    int waiting = 0;        ///< changes that the room has not heard of
    bool isPartnerHere = false;
    bool hasPartner = false;  ///< somebody else is, or was, on the board
    bool isPlaceFree = false; ///< nobody else is on the board now, whoever was
    QString myName;
    QString partnerName; ///< as it may stand in a sentence: never empty
    bool isWorking = false;
    bool isChoosing = false; ///< this person must say which of the two they are
    QString firstName;
    QString secondName;
    int suggested = -1; ///< 0, 1, or -1 when the service has no idea
    QUrl myPicture;     ///< of this person's contact card; empty when there is none
    QString failure;    ///< of the latest pairing; empty when there is none
    QString code;       ///< "123 456"; empty when there is none
    QString codeWorks;  ///< "works for 9 more minutes"
    bool isCodeOver = false;
    bool isMintingCode = false;
    QString link;
    QString greeting; ///< of a join that has just come about
    bool showsOnDesktop = true;
    bool sharesSeen = false; ///< the partner sees what this person has seen
    QString background;
    InviteQuestion inviteQuestion;

    QString stageName() const;
    /// There is something to read, to answer or to fill in before the board.
    bool needsPerson() const;

    bool operator==(const AppFace&) const = default;
};

/// How long a code works is told from `now` on. `isRetrying` as `statusLine` has it.
AppFace appFace(const AppState& state, Instant now, bool isRetrying);

} // namespace lumaro
