// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Data/Places/PlacesData.h"
#include "Lumaro/UI/AppView.h"
#include "Lumaro/UI/Board/BoardScene.h"
#include "Lumaro/UI/Board/PartnerSpeech.h"
#include "Lumaro/UI/Editor/EditorView.h"
#include "Lumaro/UI/Editor/PictureExchange.h"
#include "Lumaro/UI/MusicView.h"
#include "Lumaro/UI/PlaceView.h"
#include "Lumaro/UI/SettingsView.h"
#include "Tests/Model/AppFixture.h"
#include "Tests/UI/qml/PseudoLanguage.h"

#include <QtCore/QMimeData>
#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtCore/QVariantMap>
#include <QtQuick/QQuickItem>

#include <memory>

namespace lumaro {

/// One person's application under the pages, with every port of it in the hands of the tests' QML.
class Bed final : public QObject {
    Q_OBJECT
    Q_PROPERTY(lumaro::AppView* view READ view NOTIFY made)
    Q_PROPERTY(lumaro::SettingsView* settings READ settings NOTIFY made)
    Q_PROPERTY(lumaro::MusicView* music READ music NOTIFY made)
    Q_PROPERTY(lumaro::PlaceView* place READ place NOTIFY made)
    Q_PROPERTY(lumaro::PartnerSpeech* speech READ speech NOTIFY made)
    Q_PROPERTY(lumaro::BoardScene* scene READ scene NOTIFY made)
    Q_PROPERTY(lumaro::EditorView* editor READ editor NOTIFY made)
    Q_PROPERTY(lumaro::PictureExchange* pictures READ pictures NOTIFY made)
    /// The text with which a quick note was asked for last.
    Q_PROPERTY(QString quickNote MEMBER quickNote_)

public:
    Bed() { make(); }

    AppView* view() const { return view_.get(); }
    SettingsView* settings() const { return settings_.get(); }
    MusicView* music() const { return music_.get(); }
    PlaceView* place() const { return place_.get(); }
    PartnerSpeech* speech() const { return speech_.get(); }
    BoardScene* scene() const { return scene_.get(); }
    EditorView* editor() const { return editor_.get(); }
    PictureExchange* pictures() const { return pictures_.get(); }

    /// A new person at a new computer, whose program has just been started; no invite waits for them.
    Q_INVOKABLE void make();
    /// The same, of a build that has no server.
    Q_INVOKABLE void makeNowhere();
    /// The room of this computer starts, or does not; then it has to answer, too.
    Q_INVOKABLE void answerHomeRoom(bool starts);
    /// These people keep rooms in this network, at 192.168.1.1 and on.
    Q_INVOKABLE void roomsNearby(const QStringList& owners);
    /// The same, when the keychain will not open.
    Q_INVOKABLE void makeLocked();
    Q_INVOKABLE void openKeychain();
    /// The same, when nothing on the computer keeps secrets.
    Q_INVOKABLE void makeWithoutKeyring();
    /// Answers the oldest request; whether there was one.
    Q_INVOKABLE bool answer(int status, const QString& body);
    /// "POST /v1/couples {...}" of the latest request.
    Q_INVOKABLE QString lastRequest() const;
    Q_INVOKABLE void partnerComes(const QString& name);
    Q_INVOKABLE QString storedName() const;
    Q_INVOKABLE void dress(lumaro::Theme* theme) { settings_->dress(*theme); }
    Q_INVOKABLE void copy(const QString& text) const;
    /// How many items of a tree keys can reach.
    Q_INVOKABLE int reached(QQuickItem* root) const;
    /// Which of them a screen reader cannot name: the type of each, and those it lies in.
    Q_INVOKABLE QStringList unnamed(QQuickItem* root) const;

    /// From now on, or no longer: pages take up the language when they are made.
    Q_INVOKABLE void speakPseudo(bool speaks);
    Q_INVOKABLE int textsSeen(QQuickItem* root) const;
    Q_INVOKABLE QStringList textFaults(QQuickItem* root, const QStringList& own) const;

    // On a board.

    /// A person on an empty board; the partner is "bo".
    Q_INVOKABLE void makeOnBoard();
    /// The partner writes that item, as the wire has it; what it does not name is as usual. Its id.
    Q_INVOKABLE QString hang(QVariantMap item);
    /// The partner listens to that now.
    Q_INVOKABLE void partnerPlays(const QString& title, const QString& artist);
    /// What the computer answers when it is asked where it is: "denied", "restricted", or that it is in Lisbon.
    Q_INVOKABLE void answerPosition(const QString& answer);
    /// The position that was sent to the room last, as "38.71 -9.14"; empty when none is told.
    Q_INVOKABLE QString toldPosition() const;
    /// The partner is in Lisbon, where it rains.
    Q_INVOKABLE void partnerIsInLisbon();
    Q_INVOKABLE void partnerSharesHours(const QString& zone);
    /// The person opens the notification of what the partner put up.
    Q_INVOKABLE void openNotification() { app_->notifications.tap({NotificationAnswer::Kind::opened, "items"}); }
    /// They have looked at everything.
    Q_INVOKABLE void partnerHasSeen();
    Q_INVOKABLE void partnerTakesDown(const QString& itemId);
    /// The room no longer knows this device.
    Q_INVOKABLE void refuse();
    /// The line breaks and is tried again.
    Q_INVOKABLE void breakLine();
    /// What hangs there as the wire has it; empty when nothing does.
    Q_INVOKABLE QVariantMap item(const QString& itemId) const;
    /// In the order in which they were put up.
    Q_INVOKABLE QStringList items() const;
    /// How many batches were sent.
    Q_INVOKABLE int acts() const { return static_cast<int>(app_->rooms.sent.size()); }
    /// Milliseconds since 1970.
    Q_INVOKABLE double now() const;
    /// From now on links that are opened come here.
    Q_INVOKABLE void watchLinks();
    Q_INVOKABLE QStringList openedLinks() const { return openedLinks_; }
    Q_INVOKABLE void pass(double seconds) { app_->pass(Seconds{seconds}); }
    /// A file with a red square on white paper, twice as wide as high.
    Q_INVOKABLE QUrl picture() const;
    Q_INVOKABLE void putUpSticker(const QUrl& file);
    /// From now on the disk takes no more, or does again.
    Q_INVOKABLE void fillDisk(bool isFull);
    /// Whether the clipboard holds a picture.
    Q_INVOKABLE bool hasCopiedPicture() const;
    /// A path in a folder of the tests' own, and whether a picture is there.
    Q_INVOKABLE QString path(const QString& name) const { return folder_.filePath(name); }
    Q_INVOKABLE bool isPictureAt(const QString& path) const { return !QImage{path}.isNull(); }
    /// Types the file's name into the dialog that asks for one; false when none does.
    Q_INVOKABLE bool choose(const QUrl& file) const;
    /// Drags something from another program over the window, and out of it again; whether it would be taken.
    Q_INVOKABLE bool drag(QQuickItem* over, QPointF place, const QString& type, const QString& data) const;
    Q_INVOKABLE void dragAway(QQuickItem* over) const;
    /// Lets something fall that comes from another program.
    Q_INVOKABLE void drop(QQuickItem* on, QPointF place, const QString& type, const QString& data) const;
    /// The same for a picture that a browser holds: its encoded bytes beside where it was found.
    Q_INVOKABLE void dropPicture(QQuickItem* on, QPointF place) const;
    /// A tablet tells how hard its pen is pressed; the pointer's event that the system makes of it is the test's.
    Q_INVOKABLE void pressPen(QQuickItem* on, QPointF place, double pressure) const;
    /// Another program copies a picture; how often Qt was asked to decode it at once since then.
    Q_INVOKABLE void copyPicture();
    Q_INVOKABLE int decodedAtOnce() const { return decodedAtOnce_; }

public Q_SLOTS:
    void opened(const QUrl& link) { openedLinks_.append(link.toString(QUrl::FullyEncoded)); }

Q_SIGNALS:
    void made();

private:
    QByteArray pictureBytes() const;
    void fall(QQuickItem& on, QPointF place, QMimeData& dragged) const;
    void build(const std::string& server = "https://board.example");

    QTemporaryDir folder_;
    PseudoLanguage pseudo_;
    PlaceTable towns_ = PlaceTable::open(placesData()).value();
    QStringList openedLinks_;
    int decodedAtOnce_ = 0;
    QString quickNote_;
    std::unique_ptr<AppFixture> app_;
    std::unique_ptr<AppView> view_;
    std::unique_ptr<SettingsView> settings_;
    std::unique_ptr<MusicView> music_;
    std::unique_ptr<BoardScene> scene_;
    std::unique_ptr<PlaceView> place_;
    std::unique_ptr<PartnerSpeech> speech_;
    std::unique_ptr<EditorView> editor_;
    std::unique_ptr<PictureExchange> pictures_;
};

} // namespace lumaro
