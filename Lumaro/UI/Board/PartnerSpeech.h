// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "LumaroCore/Support/Sleeper.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <span>
#include <vector>

namespace lumaro {

/// Several deeds as one sentence: "bo put up a note, 'buy oranges'".
QString sentenceOf(std::span<const PartnerDeed> deeds, const QString& partnerName);

/// Tells people who do not see the board what the partner does to it. What is done in one go is told once, when it
/// rests: nobody is to hear each letter of a note.
class PartnerSpeech final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program makes the one there is")

public:
    /// The partner rests for so long before it is told; but it waits no longer than that.
    static constexpr Seconds pause{1.5};
    static constexpr Seconds longest{8};

    /// Both outlive this.
    PartnerSpeech(AppModel& app, Sleeper& sleeper) : app_(app), sleeper_(sleeper) {}

    void hear(const AppNews& news);

Q_SIGNALS:
    void spoke(const QString& text);

private:
    void add(const PartnerDeed& deed);
    void speak();

    AppModel& app_;
    Sleeper& sleeper_;
    std::vector<PartnerDeed> deeds_; // one for each item
    std::unique_ptr<Sleeper::Wait> rest_;
    std::unique_ptr<Sleeper::Wait> limit_;
};

} // namespace lumaro
