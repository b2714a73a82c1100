// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/HungBoard.h"

namespace lumaro {

void HungBoard::setScene(BoardScene* scene) {
    if (scene_ == scene) return;
    if (scene_ != nullptr) scene_->disconnect(this);
    scene_ = scene;
    if (scene_ != nullptr) connect(scene_, &BoardScene::hungChanged, this, &HungBoard::follow);
    Q_EMIT sceneChanged();
    follow();
}

void HungBoard::setPaused(bool isPaused) {
    if (isPaused_ == isPaused) return;
    isPaused_ = isPaused;
    Q_EMIT isPausedChanged();
    follow();
}

void HungBoard::follow() {
    if (isPaused_ || scene_ == nullptr) return;
    rows_.show(scene_->hung(), scene_->hungRows());
    background_ = scene_->background();
    isThreadTied_ = scene_->isThreadTied();
    Q_EMIT changed();
}

} // namespace lumaro
