// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace lumaro {

/// A folder that goes with the object.
class ScratchFolder {
public:
    ScratchFolder() : path_(testing::TempDir() + "lumaro-XXXXXX") { EXPECT_NE(mkdtemp(path_.data()), nullptr); }
    ~ScratchFolder() { std::filesystem::remove_all(path_); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

} // namespace lumaro
