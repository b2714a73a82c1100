// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/UserDefaults.h"
#include "LumaroCore/Support/Log.h"

#include <memory>
#include <string>

class QSettings;

namespace lumaro {

/// Settings as a file that people can read and mend: "key=value", one a line. What nobody here knows is kept.
class SettingsFile final : public UserDefaults {
public:
    /// The file and its folder are made when the first value is set. The log outlives the settings.
    SettingsFile(const std::string& path, Log& log);
    ~SettingsFile() override;

    std::optional<std::string> string(std::string_view key) const override;
    std::optional<bool> boolean(std::string_view key) const override;
    void setString(std::string_view key, std::string_view value) override;
    void setBoolean(std::string_view key, bool value) override;
    void remove(std::string_view key) override;

private:
    void store();

    std::unique_ptr<QSettings> file_;
    Log& log_;
};

} // namespace lumaro
