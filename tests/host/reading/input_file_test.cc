#include "host/reading/input_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <string>

#include "host/reading/media_facts.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

std::string answerFor(const std::filesystem::path& file) {
  try {
    const InputFile input(file);
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
  EXPECT_EQ(answerFor(directory.write("empty", "")), "empty");
}

std::string textAt(const InputFile& file, std::size_t length, std::uint64_t offset) {
  std::string text(length, '-');
  text.resize(file.read({reinterpret_cast<std::uint8_t*>(text.data()), text.size()}, offset));
  return text;
}

TEST(InputFileTest, readsWhatThereIs) {
  const TemporaryDirectory directory;
  const InputFile file(directory.write("file", "0123456789"));
  EXPECT_EQ(file.size(), 10u);
  EXPECT_EQ(textAt(file, 4, 0), "0123");
  EXPECT_EQ(textAt(file, 4, 8), "89");
  EXPECT_EQ(textAt(file, 4, 10), "");
  EXPECT_EQ(textAt(file, 4, 11), "");
  EXPECT_EQ(textAt(file, 0, 3), "");
}

TEST(InputFileTest, aFileThatBecomesShorterIsNotReadToItsEnd) {
  const TemporaryDirectory directory;
  const auto path = directory.write("file", "0123456789");
  const InputFile file(path);
  std::filesystem::resize_file(path, 5);
  EXPECT_EQ(textAt(file, 5, 0), "01234");
  try {
    textAt(file, 10, 0);
    ADD_FAILURE() << "accepted";
  } catch (const NotExamined& reason) {
    EXPECT_EQ(reason.id(), "read-error");
    EXPECT_STREQ(reason.what(), "cannot be read to its end: it has become shorter");
  }
}

}  // namespace
}  // namespace kestrel::host
