// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Fonts.h"
#include "DesignSystem/Furnish.h"
#include "DesignSystem/SystemWords.h"
#include "Tests/UI/qml/Bed.h"

#include <QtQml/QQmlEngine>
#include <QtQml/QQmlExtensionPlugin>
#include <QtQuickTest/quicktest.h>
#include <QtWidgets/QApplication>

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

int main(int argc, char** argv) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application{argc, argv};
    lumaro::SystemWords::install();
    lumaro::Setup setup;
    return quick_test_main_with_setup(argc, argv, "lumaro_ui", QUICK_TEST_SOURCE_DIR, &setup);
}

#include "main.moc"
