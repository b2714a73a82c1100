// SPDX-License-Identifier: Apache-2.0
#include "Tests/DesktopKit/OwnDisplay.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

namespace lumaro {
namespace {

// In the order in which they need each other.
struct Display {
    Display() {
        server.start(QStringLiteral("Xvfb"),
                     {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                      QStringLiteral("1280x800x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                      QStringLiteral("-noreset")});
        while (!server.canReadLine() && server.waitForReadyRead(20000)) {
        }
        qputenv("DISPLAY", ":" + server.readLine().trimmed());
        qputenv("QT_QUICK_BACKEND", "software");
        manager.setStandardErrorFile(QProcess::nullDevice());
        manager.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
        waitForManager();
        application = std::make_unique<QGuiApplication>(count, arguments);
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display() {
        application.reset();
        for (auto* process : {&manager, &server}) {
            process->terminate();
            process->waitForFinished();
        }
    }

    // An application asks once what the window manager can do, when it starts.
    static void waitForManager() {
        QElapsedTimer patience;
        patience.start();
        QByteArray root;
        while (!root.contains("window id") && patience.elapsed() < 20000) {
            QProcess ask;
            ask.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST")});
            ask.waitForFinished();
            root = ask.readAllStandardOutput();
        }
        EXPECT_TRUE(root.contains("window id")) << "no window manager";
    }

    QProcess server;
    QProcess manager;
    int count = 3;
    char name[5] = "test";
    char option[10] = "-platform";
    char platform[4] = "xcb";
    char* arguments[4] = {name, option, platform, nullptr};
    std::unique_ptr<QGuiApplication> application;
};

} // namespace

void OwnDisplayTest::SetUpTestSuite() {
    static const Display display;
}

void OwnDisplayTest::waitUntil(const std::function<bool()>& done) {
    bool isLate = false;
    QTimer deadline;
    QObject::connect(&deadline, &QTimer::timeout, &deadline, [&] { isLate = true; });
    deadline.start(std::chrono::seconds{20});
    QTimer heartbeat;
    heartbeat.start(std::chrono::milliseconds{5});
    while (!done() && !isLate) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_FALSE(isLate) << "waited in vain";
}

QString OwnDisplayTest::said(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished()) << program.toStdString() << ": " << process.errorString().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void OwnDisplayTest::click(int x, int y) {
    said(QStringLiteral("xdotool"), {QStringLiteral("mousemove"), QString::number(x), QString::number(y),
                                     QStringLiteral("click"), QStringLiteral("1")});
}

QString OwnDisplayTest::property(const QString& name, const QWindow& window) {
    return said(QStringLiteral("xprop"), {QStringLiteral("-id"), idOf(window), name});
}

void OwnDisplayTest::becomeDesktopOfAnother(const QWindow& window) {
    said(QStringLiteral("xprop"),
         {QStringLiteral("-id"), idOf(window), QStringLiteral("-f"), QStringLiteral("_NET_WM_WINDOW_TYPE"),
          QStringLiteral("32a"), QStringLiteral("-set"), QStringLiteral("_NET_WM_WINDOW_TYPE"),
          QStringLiteral("_NET_WM_WINDOW_TYPE_DESKTOP")});
}

OwnDisplayTest::SelectionOwner::SelectionOwner(const char* name) {
    auto* const server = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const auto asked = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    auto* const atom = xcb_intern_atom_reply(server, asked, nullptr);
    selection_ = atom->atom;
    std::free(atom);
    const auto owner = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, owner, xcb_setup_roots_iterator(xcb_get_setup(server)).data->root,
                      0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(server, owner, selection_, XCB_CURRENT_TIME);
    xcb_flush(server);
}

OwnDisplayTest::SelectionOwner::~SelectionOwner() {
    auto* const server = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    xcb_set_selection_owner(server, XCB_NONE, selection_, XCB_CURRENT_TIME);
    xcb_flush(server);
}

QStringList OwnDisplayTest::stacking() {
    const auto list =
        said(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST_STACKING")});
    return list.section(QStringLiteral("# "), 1).split(QStringLiteral(", "), Qt::SkipEmptyParts);
}

QString OwnDisplayTest::idOf(const QWindow& window) {
    return QStringLiteral("0x") + QString::number(window.winId(), 16);
}

} // namespace lumaro
