#include "adapters/linux/files/read_file.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using State = FileContent::State;

class ReadFileTest : public testing::Test {
 protected:
  ReadFileTest() { folder.write("file", "old"); }

  const TemporaryFolder folder;
  const fs::path path = folder.path() / "file";
};

TEST_F(ReadFileTest, readsUpToTheLimit) {
  for (const std::size_t size : {std::size_t{99}, std::size_t{100}}) {
    folder.write("file", std::string(size, 'x'));
    const FileContent read = readFile(path, 100);
    EXPECT_EQ(read.state, State::present);
    EXPECT_EQ(read.text, std::string(size, 'x'));
  }
  folder.write("file", std::string(101, 'x'));
  const FileContent read = readFile(path, 100);
  EXPECT_EQ(read.state, State::tooLarge);
  EXPECT_TRUE(read.text.empty());
  EXPECT_EQ(read.error, "it is larger than 100 bytes");
}

TEST_F(ReadFileTest, readsFilesOfSeveralBlocksAndEmptyOnes) {
  std::string text;
  for (int i = 0; i < 20'000; ++i) text += std::to_string(i);
  folder.write("file", text);
  EXPECT_EQ(readFile(path, 1'000'000).text, text);
  folder.write("file", "");
  EXPECT_EQ(readFile(path, 100).state, State::present);
  EXPECT_EQ(readFile(path, 100).text, "");
}

TEST_F(ReadFileTest, tellsWhyThereIsNothingToRead) {
  EXPECT_EQ(readFile(folder.path() / "missing", 100).state, State::absent);
  EXPECT_EQ(readFile(folder.path(), 100).state, State::notAFile);
  EXPECT_EQ(readFile("/dev/zero", 100).state, State::notAFile) << "which never ends";
  const fs::path pipe = folder.path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(readFile(pipe, 100).state, State::notAFile) << "which nobody writes to";
  EXPECT_EQ(readFile(path / "below a file", 100).state, State::unreadable);
}

}  // namespace
}  // namespace velotap
