// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCityView/CityPage.h"

#include <QTimer>
#include <QtWebEngineCore/QWebEngineProfile>
#include <QtWebEngineWidgets/QWebEngineView>

#include <cstdint>

class QImage;

namespace lumaro {

/// Loads the page, waits until its title is "drawn" and what it drew has been shown, writes the picture and ends the
/// program, as it does where that cannot be. The window is not put on the screen.
class Drawing final : public QObject {
public:
    explicit Drawing(const CityRequest& request);
    ~Drawing() override;

private:
    enum class Stage : std::uint8_t { loading, marked, unmarked };

    void loaded(const QWebEngineLoadingInfo& info);
    void look();
    void mark(bool isThere);
    void watchFrames();
    void write(QImage picture);

    CityRequest request_;
    QWebEngineProfile profile_; ///< without a name: off the record
    CityRequests requests_;
    CityPage page_;
    QWebEngineView view_;
    QTimer memoryWatch_;
    QTimer frameWatch_;
    Stage stage_ = Stage::loading;
};

} // namespace lumaro
