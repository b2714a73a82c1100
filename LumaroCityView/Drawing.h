// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCityView/CityPage.h"

#include <QTimer>
#include <QtWebEngineCore/QWebEngineProfile>
#include <QtWebEngineWidgets/QWebEngineView>

class QImage;

namespace lumaro {

/// Loads the page, waits until its title is "drawn" and what it drew has been shown, writes the picture and quits. The
/// window is not put on the screen. Where that cannot be, the program ends.
class Drawing final : public QObject {
public:
    explicit Drawing(const CityRequest& request);
    ~Drawing() override;

private:
    void loaded(const QWebEngineLoadingInfo& info);
    void look();
    void waitForFrames();
    void write();

    CityRequest request_;
    QWebEngineProfile profile_; ///< without a name: off the record
    CityRequests requests_;
    CityPage page_;
    QWebEngineView view_;
    QTimer memoryWatch_;
    bool isDrawn_ = false;
};

} // namespace lumaro
