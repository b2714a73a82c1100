// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/DesktopScene.h"

namespace lumaro {

void DesktopScene::setScene(BoardScene* scene) {
    if (scene_ == scene) return;
    if (scene_ != nullptr) scene_->disconnect(this);
    scene_ = scene;
    if (scene_ != nullptr) connect(scene_, &BoardScene::settledChanged, this, &DesktopScene::follow);
    Q_EMIT sceneChanged();
    follow();
}

void DesktopScene::setPaused(bool isPaused) {
    if (isPaused_ == isPaused) return;
    isPaused_ = isPaused;
    Q_EMIT isPausedChanged();
    follow();
}

void DesktopScene::follow() {
    if (isPaused_ || scene_ == nullptr) return;
    rows_.show(scene_->settled(), scene_->settledRows());
    background_ = scene_->background();
    isThreadTied_ = scene_->isThreadTied();
    Q_EMIT changed();
}

} // namespace lumaro
