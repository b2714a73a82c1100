// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <vector>

namespace lumaro {

/// One picture of the board, as large as the window allows. A photo is one of the photos, a sticker one of the
/// stickers, in the order in which people read. The one that is seen is the selected one. Its pixels are decoded in the
/// background and let go of when it is closed.
class LargeView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the picture exchange has it")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(bool isPhoto READ isPhoto NOTIFY changed)
    Q_PROPERTY(QString caption READ caption NOTIFY changed)
    /// Width over height.
    Q_PROPERTY(double aspect READ aspect NOTIFY changed)
    /// Where it stands among the others: the first is number 1.
    Q_PROPERTY(int number READ number NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// Why nothing is seen yet, or never; empty when it is.
    Q_PROPERTY(QString missing READ missing NOTIFY changed)
    /// What came of the last thing that was asked for: that it was saved, or why not.
    Q_PROPERTY(QString said READ said NOTIFY changed)

public:
    /// Both outlive the view.
    LargeView(AppModel& app, BackgroundRunner& background, QObject* parent = nullptr)
        : QObject(parent), app_(app), background_(background) {}

    bool isOpen() const { return item_.has_value(); }
    bool isPhoto() const { return isOpen() && item_->kind() == ItemKind::photo; }
    QString caption() const;
    double aspect() const;
    int number() const;
    int count() const { return static_cast<int>(all().size()); }
    QString missing() const;
    const QString& said() const { return said_; }
    /// Null until it is decoded.
    const QImage& pixels() const { return pixels_; }

    /// What changed: the picture that is seen may have been taken down, or have come.
    void hear(const AppChanges& changes);
    Q_INVOKABLE void say(const QString& text);
    /// Writes the picture as it is stored to a file of its own; the one that was there before stays until that is done.
    Q_INVOKABLE void saveTo(const QString& path);

    /// The selected photo or sticker.
    Q_INVOKABLE void open();
    /// So many further; stays at the ends.
    Q_INVOKABLE void step(int pictures);
    /// Asks for a file to save the picture as.
    Q_INVOKABLE void save();
    Q_INVOKABLE void close();

Q_SIGNALS:
    void changed();
    /// It closed by itself, and why.
    void noticed(const QString& text);

private:
    /// Those of its kind, as people read.
    std::vector<UUID> all() const;
    const UUID* mediaId() const;
    void show(const BoardItem& item);
    void decode();

    AppModel& app_;
    BackgroundRunner& background_;
    std::optional<BoardItem> item_;
    std::vector<UUID> order_; ///< as it was when the board changed last
    QImage pixels_;
    bool isBroken_ = false;
    QString said_;
    std::unique_ptr<BackgroundRunner::Task> decoding_;
    std::unique_ptr<BackgroundRunner::Task> saving_;
};

} // namespace lumaro
