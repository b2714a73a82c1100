// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

namespace lumaro {

/// What a photo is probably of, as labels for `cv::grabCut`: what stands out from what runs in from the picture's
/// edges. Everything is probable background when nothing does. `colours` is a small RGB picture without grain; the same
/// one gives the same labels.
///
/// Three steps. The colours along the edges are sorted into clusters; one that fills most of a side, or lies on two, is
/// background, one on a single side may be somebody who stands there. From the background's pixels the minimum barrier
/// distance (Zhang et al., "Minimum Barrier Salient Object Detection at 80 FPS", ICCV 2015) says how much the colour
/// must change on the smoothest way to a pixel, so a gradient, a soft shadow or a table's edge costs little. Its
/// threshold is Otsu's.
cv::Mat guessedSubject(const cv::Mat& colours);

} // namespace lumaro
