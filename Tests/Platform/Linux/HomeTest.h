// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Platform/Posix/PosixFileSystem.h"
#include "Tests/Platform/Linux/PrivateBus.h"

#include <filesystem>
#include <fstream>

namespace lumaro {

/// A test with files of a person's home, in its folder.
class HomeTest : public BusTest {
protected:
    void write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path{path(name)}.parent_path());
        std::ofstream{path(name)} << text;
    }
    std::string read(const std::string& name) { return files_.readFile(path(name)).value_or(""); }

    /// A program that writes its arguments, one a line, to a file of this folder.
    std::string writeProgram(const std::string& name, const std::string& heard) const {
        write(name, "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + path("part") + "' && mv '" + path("part") + "' '" +
                        path(heard) + "'\n");
        std::filesystem::permissions(path(name), std::filesystem::perms::owner_all);
        return path(name);
    }
    /// What it was called with, once it was.
    std::string heard(const std::string& name) {
        waitUntil([&] { return std::filesystem::exists(path(name)); });
        return read(name);
    }

    PosixFileSystem files_;
};

} // namespace lumaro
