// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Furnish.h"

#include "DesignSystem/FaceProvider.h"
#include "DesignSystem/IconProvider.h"
#include "DesignSystem/ShadowProvider.h"

#include <QtQml/QQmlComponent>

namespace lumaro {

void furnish(QQmlEngine& engine) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QLatin1String{FaceProvider::name}, new FaceProvider);
    engine.addImageProvider(QLatin1String{IconProvider::name}, new IconProvider);
    engine.addImageProvider(QLatin1String{ShadowProvider::name}, new ShadowProvider);
}

Theme& themeOf(QQmlEngine& engine) {
    // A module's types are known once something imports it.
    QQmlComponent any{&engine};
    any.setData("import QtQml; import DesignSystem; QtObject {}", {});
    return *engine.singletonInstance<Theme*>(qmlTypeId("DesignSystem", 1, 0, "Theme"));
}

} // namespace lumaro
