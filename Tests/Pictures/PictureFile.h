// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

#include <string>

namespace lumaro {

/// The picture as a file of that format.
inline std::string fileOf(const QImage& picture, const char* format, int quality = 95) {
    QByteArray bytes;
    QBuffer buffer{&bytes};
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(picture.save(&buffer, format, quality));
    return bytes.toStdString();
}

} // namespace lumaro
