// SPDX-License-Identifier: Apache-2.0
// A window of Qt's Wayland plugin whose surface gets the role of a layer instead of that of a toplevel. Qt gives a
// window that bypasses the window manager no role when its environment says so, and asks for no symbol that is not
// public.
#include "LumaroCore/DesktopKit/WaylandDesktop.h"

#include "LumaroCore/DesktopKit/LayerShell.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <string_view>
#include <utility>

namespace lumaro::wayland {
namespace {

constexpr std::uint32_t everyEdge = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                    ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
constexpr std::int32_t underPanelsToo = -1;

struct Globals {
    wl_compositor* compositor = nullptr;
    zwlr_layer_shell_v1* layers = nullptr;
    bool isPlasma = false;
};

wl_display* display() {
    return static_cast<wl_display*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("wl_display"));
}

wl_surface* surfaceOf(QWindow& window) {
    return static_cast<wl_surface*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", &window));
}

wl_output* outputOf(QScreen& screen) {
    return static_cast<wl_output*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForScreen("output", &screen));
}

void take(void* data, wl_registry* registry, std::uint32_t id, const char* interface, std::uint32_t /*version*/) {
    auto& globals = *static_cast<Globals*>(data);
    const auto bind = [&](const wl_interface& wanted) { return wl_registry_bind(registry, id, &wanted, 1); };
    const std::string_view name{interface};
    if (name == wl_compositor_interface.name) {
        globals.compositor = static_cast<wl_compositor*>(bind(wl_compositor_interface));
    }
    if (name == zwlr_layer_shell_v1_interface.name) {
        globals.layers = static_cast<zwlr_layer_shell_v1*>(bind(zwlr_layer_shell_v1_interface));
    }
    if (name == "org_kde_plasma_shell") globals.isPlasma = true;
}
void ignore(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*id*/) {
}

// What a compositor offers stays as long as it does, and so does this process.
const Globals& globals() {
    static const Globals found = [] {
        Globals offered;
        auto* const to = display();
        if (to == nullptr) return offered;
        static constexpr wl_registry_listener listener{take, ignore};
        auto* const registry = wl_display_get_registry(to);
        wl_registry_add_listener(registry, &listener, &offered);
        wl_display_roundtrip(to);
        wl_registry_destroy(registry);
        return offered;
    }();
    return found;
}

// The role of one window's surface. It ends before the surface does: when the window is hidden or goes.
class Layer final : public QObject {
public:
    // Newer surfaces of a layer go below older ones, so that whoever draws the wallpaper would hide the lowest.
    explicit Layer(QWindow& window)
        : QObject(&window), window_(window),
          role_(zwlr_layer_shell_v1_get_layer_surface(globals().layers, surfaceOf(window), outputOf(*window.screen()),
                                                      ZWLR_LAYER_SHELL_V1_LAYER_BOTTOM, "lumaro-board")) {
        zwlr_layer_surface_v1_set_anchor(role_, everyEdge);
        zwlr_layer_surface_v1_set_exclusive_zone(role_, underPanelsToo);
        static constexpr zwlr_layer_surface_v1_listener listener{fit, end};
        zwlr_layer_surface_v1_add_listener(role_, &listener, this);
        wl_surface_commit(surfaceOf(window));
        wl_display_roundtrip(display()); // no picture may go before the compositor said how large it is
        connect(&window, &QWindow::visibleChanged, this, [this](bool isVisible) {
            if (!isVisible) drop();
        });
    }
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;
    ~Layer() override { drop(); }

private:
    void drop() {
        if (auto* const gone = std::exchange(role_, nullptr)) zwlr_layer_surface_v1_destroy(gone);
    }
    static void fit(void* layer, zwlr_layer_surface_v1* role, std::uint32_t serial, std::uint32_t width,
                    std::uint32_t height) {
        zwlr_layer_surface_v1_ack_configure(role, serial);
        static_cast<Layer*>(layer)->window_.resize(static_cast<int>(width), static_cast<int>(height));
    }
    static void end(void* layer, zwlr_layer_surface_v1* /*role*/) { static_cast<Layer*>(layer)->drop(); }

    QWindow& window_;
    zwlr_layer_surface_v1* role_;
};

} // namespace

bool isHere() {
    return QGuiApplication::platformName().startsWith(QLatin1String{"wayland"});
}

DesktopLevel lowestLevel() {
    if (globals().layers == nullptr) return DesktopLevel::refused;
    // Its icons and its wallpaper are one surface, which the lowest layer that lasts would cover.
    return globals().isPlasma ? DesktopLevel::iconsInTheWay : DesktopLevel::behindIcons;
}

void prepareDesktop(QWindow& window) {
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
    window.setFlag(Qt::BypassWindowManagerHint);
}

bool becomeDesktop(QWindow& window) {
    if (lowestLevel() != DesktopLevel::behindIcons || surfaceOf(window) == nullptr) return false;
    new Layer(window);
    return true;
}

void letClicksThrough(QWindow& window, bool isClickThrough) {
    auto* const surface = surfaceOf(window);
    if (globals().compositor == nullptr || surface == nullptr) return;
    auto* const nowhere = isClickThrough ? wl_compositor_create_region(globals().compositor) : nullptr;
    wl_surface_set_input_region(surface, nowhere);
    if (nowhere != nullptr) wl_region_destroy(nowhere);
    wl_surface_commit(surface);
}

} // namespace lumaro::wayland
