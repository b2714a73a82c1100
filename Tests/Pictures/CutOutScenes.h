// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>

#include <string_view>

namespace lumaro {

/// A made-up photo and what in it is to be cut out.
struct CutOutScene {
    enum class Subject { person, cat, cup };

    QImage photo;
    QImage truth; ///< white where the subject is

    /// With a plain background as people have them: a wall with its light, out of focus, a table under it; shadows,
    /// grain. The same seed makes the same scene; colours, places and light follow from it. 4 to 3, `width` pixels
    /// wide.
    static CutOutScene make(Subject subject, unsigned seed, int width);
};

constexpr std::string_view nameOf(CutOutScene::Subject subject) {
    return subject == CutOutScene::Subject::person ? "person" : subject == CutOutScene::Subject::cat ? "cat" : "cup";
}

/// Makes the process an application, which looks for its modules beside itself. Twice is once.
void becomeApplication();

/// Shared area over joint area of what a mask keeps and the truth.
double likeness(const QImage& mask, const QImage& truth);

} // namespace lumaro
