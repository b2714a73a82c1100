// SPDX-License-Identifier: Apache-2.0
// What every FileSystem promises, held by the real one and by the one in memory.
#include "Platform/Posix/PosixFileSystem.h"
#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Support/ScratchFolder.h"

#include <sys/stat.h>

#include <algorithm>

namespace lumaro {
namespace {

template <class Files>
class FileSystemContract : public testing::Test {
protected:
    FileSystemContract() { EXPECT_TRUE(files_.createDirectories(root_)); }

    std::string at(const std::string& name) const { return root_ + "/" + name; }
    std::vector<std::string> listed() {
        auto names = files_.listFiles(root_).value();
        std::ranges::sort(names);
        return names;
    }

    Files files_;
    ScratchFolder folder_;
    std::string root_ = folder_.file("deep/folder");
};

using FileSystems = testing::Types<MemoryFileSystem, PosixFileSystem>;
TYPED_TEST_SUITE(FileSystemContract, FileSystems);

TYPED_TEST(FileSystemContract, GivesBackWhatWasWrittenByteForByte) {
    for (const std::string& bytes : {std::string{}, std::string{"a\0b\xff", 4}, std::string(300000, 'x')}) {
        ASSERT_TRUE(this->files_.writeFile(this->at("file"), bytes));
        ASSERT_TRUE(this->files_.syncFile(this->at("file")));
        ASSERT_TRUE(this->files_.syncDirectory(this->root_));
        EXPECT_EQ(this->files_.readFile(this->at("file")), bytes);
    }
    EXPECT_TRUE(this->files_.createDirectories(this->root_));
}

TYPED_TEST(FileSystemContract, RenamesOverWhatIsThereAndListsHiddenFiles) {
    ASSERT_TRUE(this->files_.writeFile(this->at(".new"), "new"));
    ASSERT_TRUE(this->files_.writeFile(this->at("old"), "old"));
    EXPECT_EQ(this->listed(), (std::vector<std::string>{".new", "old"}));
    ASSERT_TRUE(this->files_.rename(this->at(".new"), this->at("old")));
    EXPECT_EQ(this->listed(), std::vector<std::string>{"old"});
    EXPECT_EQ(this->files_.readFile(this->at("old")), "new");
    ASSERT_TRUE(this->files_.removeFile(this->at("old")));
    EXPECT_TRUE(this->listed().empty());
}

TYPED_TEST(FileSystemContract, NamesWhatIsNotThere) {
    const auto expectNotFound = [](const auto& result) {
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().fault, FileFault::notFound);
        EXPECT_NE(result.error().path, "");
    };
    expectNotFound(this->files_.readFile(this->at("none")));
    expectNotFound(this->files_.removeFile(this->at("none")));
    expectNotFound(this->files_.syncFile(this->at("none")));
    expectNotFound(this->files_.rename(this->at("none"), this->at("other")));
    expectNotFound(this->files_.listFiles(this->at("none")));
    expectNotFound(this->files_.writeFile(this->at("none/file"), "x"));
}

TEST(PosixFileSystem, MakesFilesForTheirOwnerAlone) {
    const ScratchFolder scratch;
    PosixFileSystem files;
    ASSERT_TRUE(files.createDirectories(scratch.file("a")));
    ASSERT_TRUE(files.writeFile(scratch.file("a/file"), "x"));
    struct stat folder{};
    struct stat file{};
    ASSERT_EQ(stat(scratch.file("a").c_str(), &folder) + stat(scratch.file("a/file").c_str(), &file), 0);
    EXPECT_EQ(folder.st_mode & 0777U, 0700U);
    EXPECT_EQ(file.st_mode & 0777U, 0600U);
    EXPECT_EQ(files.writeFile("/dev/full", "x").error().fault, FileFault::noSpace);
}

} // namespace
} // namespace lumaro
