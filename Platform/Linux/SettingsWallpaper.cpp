// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/SettingsWallpaper.h"

#include "Platform/Linux/GLibCall.h"

#include <memory>
#include <string_view>

namespace lumaro {
namespace {

struct FreeSettingsPart {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
    void operator()(GSettingsSchemaKey* key) const { g_settings_schema_key_unref(key); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(gchar* text) const { g_free(text); }
};
template <class T>
using Part = std::unique_ptr<T, FreeSettingsPart>;

const char* schemaName(WallpaperDesk desk) {
    switch (desk) {
    case WallpaperDesk::gnome: return "org.gnome.desktop.background";
    case WallpaperDesk::cinnamon: return "org.cinnamon.desktop.background";
    case WallpaperDesk::mate: return "org.mate.background";
    case WallpaperDesk::xfce:
    case WallpaperDesk::pcmanfm: break;
    }
    return nullptr;
}

Part<GSettingsSchema> schemaOf(WallpaperDesk desk) {
    auto* const source = g_settings_schema_source_get_default();
    const auto* const name = schemaName(desk);
    if (source == nullptr || name == nullptr) return nullptr;
    return Part<GSettingsSchema>{g_settings_schema_source_lookup(source, name, TRUE)};
}

/// While it lives, what GLib has to say of settings on this thread stays on it.
class OwnContext {
public:
    OwnContext() : context_(g_main_context_new()) { g_main_context_push_thread_default(context_); }
    OwnContext(const OwnContext&) = delete;
    OwnContext& operator=(const OwnContext&) = delete;
    ~OwnContext() {
        g_main_context_pop_thread_default(context_);
        g_main_context_unref(context_);
    }

private:
    GMainContext* context_;
};

} // namespace

bool hasSettings(WallpaperDesk desk) {
    return schemaOf(desk) != nullptr;
}

std::expected<WallpaperSettings, std::string> readSettings(WallpaperDesk desk) {
    const auto schema = schemaOf(desk);
    if (!schema) return std::unexpected("this desktop has no settings of its wallpaper");
    const OwnContext context;
    const GLibOwned<GSettings> settings{g_settings_new_full(schema.get(), nullptr, nullptr)};
    WallpaperSettings found;
    for (const char* const key : {"picture-uri", "picture-uri-dark", "picture-filename", "picture-options"}) {
        if (g_settings_schema_has_key(schema.get(), key) == FALSE) continue;
        const Part<GVariant> value{g_settings_get_user_value(settings.get(), key)};
        const Part<gchar> text{value ? g_variant_print(value.get(), FALSE) : nullptr};
        found[key] = text ? std::optional{std::string{text.get()}} : std::nullopt;
    }
    return found;
}

std::expected<void, std::string> writeSettings(WallpaperDesk desk, const WallpaperSettings& settings) {
    const auto schema = schemaOf(desk);
    if (!schema) return std::unexpected("this desktop has no settings of its wallpaper");
    const OwnContext context;
    const GLibOwned<GSettings> target{g_settings_new_full(schema.get(), nullptr, nullptr)};
    for (const auto& [name, text] : settings) {
        if (g_settings_schema_has_key(schema.get(), name.c_str()) == FALSE) continue;
        if (g_settings_is_writable(target.get(), name.c_str()) == FALSE) {
            return std::unexpected(name + " may not be changed");
        }
        if (!text) {
            g_settings_reset(target.get(), name.c_str());
            continue;
        }
        const Part<GSettingsSchemaKey> key{g_settings_schema_get_key(schema.get(), name.c_str())};
        GError* error = nullptr;
        const Part<GVariant> value{
            g_variant_parse(g_settings_schema_key_get_value_type(key.get()), text->c_str(), nullptr, nullptr, &error)};
        const GLibOwned<GError> fault{error};
        if (!value || g_settings_set_value(target.get(), name.c_str(), value.get()) == FALSE) {
            return std::unexpected(name + " does not take " + *text);
        }
    }
    g_settings_sync();
    return {};
}

} // namespace lumaro
