// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Fonts.h"
#include "DesignSystem/Furnish.h"
#include "Tests/UI/qml/Bed.h"

#include <QtQml/QQmlEngine>
#include <QtQml/QQmlExtensionPlugin>
#include <QtQuickTest/quicktest.h>

Q_IMPORT_QML_PLUGIN(DesignSystemPlugin)
Q_IMPORT_QML_PLUGIN(WidgetsPlugin)
Q_IMPORT_QML_PLUGIN(Lumaro_UIPlugin)

namespace lumaro {

/// Makes the engine of each test file like the program's.
class Setup final : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) {
        registerFonts();
        furnish(*engine);
        qmlRegisterSingletonType<Bed>("Lumaro.Testing", 1, 0, "Bed", [](QQmlEngine*, QJSEngine*) { return new Bed; });
    }
};

} // namespace lumaro

QUICK_TEST_MAIN_WITH_SETUP(lumaro_ui, lumaro::Setup)

#include "main.moc"
