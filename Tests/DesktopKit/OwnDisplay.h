// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGuiApplication>
#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>

class QWindow;

namespace lumaro {

/// A test on an X server and a window manager that nobody else sees; both end with the program's tests.
class OwnDisplayTest : public testing::Test {
public:
    /// The window, which is not shown yet, is the desktop of a program that is not ours.
    static void becomeDesktopOfAnother(const QWindow& window);

    /// Owns a selection of the X server, as a compositor does that has none of its windows yet.
    class SelectionOwner {
    public:
        explicit SelectionOwner(const char* name);
        SelectionOwner(const SelectionOwner&) = delete;
        SelectionOwner& operator=(const SelectionOwner&) = delete;
        ~SelectionOwner();

    private:
        std::uint32_t selection_;
    };

protected:
    static void SetUpTestSuite();

    /// Runs the event loop until `done`; a test that waits for ever fails.
    static void waitUntil(const std::function<bool()>& done);
    /// What a command line program says.
    static QString said(const QString& program, const QStringList& arguments);
    static void click(int x, int y);
    /// What others read of a window's property.
    static QString property(const QString& name, const QWindow& window);
    /// The windows that the window manager knows, the lowest first, by their numbers.
    static QStringList stacking();
    static QString idOf(const QWindow& window);
};

} // namespace lumaro
