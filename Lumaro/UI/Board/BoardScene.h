// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/UI/Board/BoardListModel.h"
#include "Lumaro/UI/Board/PictureStore.h"
#include "Lumaro/UI/Board/PlaceWords.h"
#include "Lumaro/UI/Board/TrackWords.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"

#include <QtCore/QObject>
#include <QtCore/QTimeZone>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <vector>

namespace lumaro {

/// The board as the windows of this device show it: as it is, and with what is in the hand over it. It wakes for what
/// changes as time passes, and never when nothing does.
class BoardScene final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the application has it")
    Q_PROPERTY(lumaro::BoardListModel* rows READ rows CONSTANT)
    Q_PROPERTY(QString background READ background NOTIFY boardChanged)
    Q_PROPERTY(bool isThreadTied READ isThreadTied NOTIFY boardChanged)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY boardChanged)

public:
    /// All outlive the scene.
    struct Ports {
        AppModel& app;
        WallClock& clock;
        Sleeper& sleeper;
        BackgroundRunner& background;
        LiveContext::SceneryAt sceneryAt = {}; ///< none where there is no table of places
    };

    explicit BoardScene(Ports ports, QObject* parent = nullptr);
    ~BoardScene() override = default;

    BoardListModel* rows() { return &rows_; }
    QString background() const;
    bool isThreadTied() const { return settled_.threadTiedAt.has_value(); }
    bool isEmpty() const { return shown_.items.empty(); }
    /// With what is in the hand.
    const Board& shown() const { return shown_; }
    /// Without what is in the hand, as the desktop and the partner see it; the rows are those of its items.
    const Board& settled() const { return settled_; }
    const std::vector<BoardRow>& settledRows() const { return settledRows_; }

    /// What changed of the application.
    void hear(AppChanges changed);
    /// How many pixels of the sharpest window one point of the canvas has.
    Q_INVOKABLE void wantPixels(double perPoint);
    /// What plays on a music card at this moment.
    Q_INVOKABLE lumaro::TrackWords trackOf(const QString& itemId) const;
    /// Whose it is, and since when.
    Q_INVOKABLE QString whoseOf(const QString& itemId) const;
    /// What is missing on a card of the partner's, and what they can do; empty of any other item.
    Q_INVOKABLE QString missingOf(const QString& itemId) const;
    /// What a note to them might ask then; empty where there is nothing to ask.
    Q_INVOKABLE QString questionOf(const QString& itemId) const;
    /// What is known at this moment of the place behind a window on the board.
    Q_INVOKABLE lumaro::PlaceWords placeOf(const QString& itemId) const;
    /// The same of this person's own place, as the partner is told of it.
    PlaceWords ownPlace() const;
    /// How this person reads temperatures.
    void setFahrenheit(bool isFahrenheit);

Q_SIGNALS:
    void boardChanged();
    /// The board without what is in the hand, or its rows.
    void settledChanged();
    /// The red thread was tied just now: it is to be seen drawing itself.
    void threadTied();

private:
    void refresh();
    void refreshHand();
    LiveContext live() const;
    const BoardItem* shownItem(const QString& itemId) const;
    Board withHand() const;
    void letGoOfPictures();
    void waitForChange();
    void readZone();

    Ports ports_;
    PictureStore pictures_;
    LiveContext::Picture picture_;
    QTimeZone zone_;
    std::optional<Instant> zoneReadAt_;
    Board settled_;
    std::vector<BoardRow> settledRows_;
    Board shown_;
    BoardListModel rows_;
    double pixelsPerPoint_ = 1;
    bool isFahrenheit_ = false;
    std::unique_ptr<Sleeper::Wait> change_;
};

} // namespace lumaro
