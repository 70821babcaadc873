#include "host/reading/libmediainfo_reader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "host/reading/media_facts.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

std::string answerFor(const std::filesystem::path& file) {
  try {
    checkInputFile(file);
    return "good";
  } catch (const NotExamined& reason) {
    return reason.what();
  }
}

TEST(InputFileTest, saysWhatIsWrong) {
  const TemporaryDirectory directory;
  const auto file = directory.write("file", "x");
  std::filesystem::create_symlink("file", directory / "link");
  std::filesystem::create_symlink("nothing", directory / "dangling");
  std::filesystem::create_symlink("loop", directory / "loop");
  ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(answerFor(file), "good");
  EXPECT_EQ(answerFor(directory / "link"), "good");
  EXPECT_EQ(answerFor(directory / "other"), "no such file");
  EXPECT_EQ(answerFor(""), "no such file");
  EXPECT_EQ(answerFor(directory / "file/other"), "no such file");
  EXPECT_EQ(answerFor(directory / "dangling"), "a link to a file that does not exist");
  EXPECT_EQ(answerFor(directory / "loop"), "cannot be reached: Too many levels of symbolic links");
  EXPECT_EQ(answerFor(directory / "."), "a directory, not a file");
  EXPECT_EQ(answerFor(directory / "pipe"), "a pipe or a device, not a regular file");
  EXPECT_EQ(answerFor("/dev/null"), "a pipe or a device, not a regular file");
  EXPECT_EQ(answerFor(directory.write("empty", "")), "empty, or cannot be read");
}

}  // namespace
}  // namespace kestrel::host
