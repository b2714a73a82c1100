// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/BoardListModel.h"
#include "Lumaro/UI/Board/BoardScene.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// The board for a desktop's window, without what is in the hand. While it is paused nothing here changes, so that the
/// window draws nothing; afterwards it shows at once what came meanwhile.
class DesktopScene : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::BoardScene* scene READ scene WRITE setScene NOTIFY sceneChanged REQUIRED)
    Q_PROPERTY(bool isPaused READ isPaused WRITE setPaused NOTIFY isPausedChanged)
    Q_PROPERTY(lumaro::BoardListModel* rows READ rows CONSTANT)
    Q_PROPERTY(QString background READ background NOTIFY changed)
    Q_PROPERTY(bool isThreadTied READ isThreadTied NOTIFY changed)

public:
    using QObject::QObject;

    BoardScene* scene() const { return scene_; }
    void setScene(BoardScene* scene);
    bool isPaused() const { return isPaused_; }
    void setPaused(bool isPaused);
    BoardListModel* rows() { return &rows_; }
    const QString& background() const { return background_; }
    bool isThreadTied() const { return isThreadTied_; }

Q_SIGNALS:
    void sceneChanged();
    void isPausedChanged();
    void changed();

private:
    void follow();

    QPointer<BoardScene> scene_;
    bool isPaused_ = false;
    BoardListModel rows_;
    QString background_ = QStringLiteral("butter");
    bool isThreadTied_ = false;
};

} // namespace lumaro
