// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/GroupDraft.h"
#include "LumaroCore/BoardModel/Board.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// What is selected, an item or a group, as handles and menus need it. Places are points of the canvas.
struct SelectedItem {
    Q_GADGET
    QML_VALUE_TYPE(selectedItem)
    Q_PROPERTY(bool isThere MEMBER isThere CONSTANT)
    Q_PROPERTY(int count MEMBER count CONSTANT)
    Q_PROPERTY(QString itemId MEMBER itemId CONSTANT)
    Q_PROPERTY(QString kind MEMBER kind CONSTANT)
    Q_PROPERTY(double centerX MEMBER centerX CONSTANT)
    Q_PROPERTY(double centerY MEMBER centerY CONSTANT)
    Q_PROPERTY(double width MEMBER width CONSTANT)
    Q_PROPERTY(double height MEMBER height CONSTANT)
    Q_PROPERTY(double tilt MEMBER tilt CONSTANT)
    Q_PROPERTY(double itemScale MEMBER itemScale CONSTANT)
    Q_PROPERTY(bool isLocked MEMBER isLocked CONSTANT)
    Q_PROPERTY(bool canDrawOn MEMBER canDrawOn CONSTANT)
    Q_PROPERTY(bool canResize MEMBER canResize CONSTANT)
    Q_PROPERTY(bool canEdit MEMBER canEdit CONSTANT)
    Q_PROPERTY(bool canOpen MEMBER canOpen CONSTANT)
    Q_PROPERTY(bool canCaption MEMBER canCaption CONSTANT)
    Q_PROPERTY(bool canKeep MEMBER canKeep CONSTANT)
    Q_PROPERTY(bool isKept MEMBER isKept CONSTANT)
    Q_PROPERTY(QString paper MEMBER paper CONSTANT)
    Q_PROPERTY(QString pin MEMBER pin CONSTANT)
    Q_PROPERTY(QString comesDown MEMBER comesDown CONSTANT)
    Q_PROPERTY(bool hasLinks MEMBER hasLinks CONSTANT)
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(double targetMs MEMBER targetMs CONSTANT)
    Q_PROPERTY(int minutes MEMBER minutes CONSTANT)
    Q_PROPERTY(bool canStart MEMBER canStart CONSTANT)
    Q_PROPERTY(bool canJoin MEMBER canJoin CONSTANT)
    Q_PROPERTY(bool canCoolDown MEMBER canCoolDown CONSTANT)
    Q_PROPERTY(bool canRest MEMBER canRest CONSTANT)
    Q_PROPERTY(bool isOwnMusic MEMBER isOwnMusic CONSTANT)
    Q_PROPERTY(bool isOwnPlace MEMBER isOwnPlace CONSTANT)

public:
    bool isThere = false;
    int count = 0; ///< more than one: a group, which has a place and a size, and neither id nor kind
    QString itemId;
    QString kind;
    double centerX = 0;
    double centerY = 0;
    double width = 0; ///< with its scale
    double height = 0;
    double tilt = 0;
    double itemScale = 1;
    bool isLocked = false; ///< by itself, or by what it is drawn on
    bool canDrawOn = false;
    bool canResize = false;
    bool canEdit = false; ///< there is something to write, draw or set
    bool canOpen = false; ///< it is a picture that can be seen large
    bool canCaption = false;
    bool canKeep = false;
    bool isKept = false;
    QString paper{}; ///< of a note; so are the next three
    QString pin{};
    QString comesDown{}; ///< "comes down tomorrow at 9:14"; empty where it is kept
    bool hasLinks = false;
    QString text{};      ///< a caption or label
    double targetMs = 0; ///< of a countdown, since 1970
    int minutes = 0;     ///< of a block
    bool canStart = false;
    bool canJoin = false;
    bool canCoolDown = false;
    bool canRest = false;
    bool isOwnMusic = false; ///< the card of what this person listens to
    bool isOwnPlace = false; ///< the window of where this person is

    bool operator==(const SelectedItem&) const = default;
};

SelectedItem selectedItem(const BoardItem& item, PartnerID me, Instant now);
SelectedItem selectedGroup(const GroupFrame& frame, std::size_t count, bool hasNotes, bool areKept);

} // namespace lumaro
