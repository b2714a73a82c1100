// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>

#include <string>

namespace lumaro {

/// How a picture, of `scale` pixels a point, differs from the golden one of that name ("widgets/notes") in a way that
/// people see; empty when it does not. The picture is then left among the temporary files. Where LUMARO_WRITE_GOLDEN is
/// set, the picture of one pixel a point becomes the golden one.
std::string differenceFromKept(const QImage& picture, double scale, const QString& name);

} // namespace lumaro
