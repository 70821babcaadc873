#include "host/basics/output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#if !defined(_WIN32)
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::ptrdiff_t filesIn(const fs::path& directory) {
  return std::distance(fs::directory_iterator(directory), fs::directory_iterator());
}

TEST(OutputTest, aFileIsWrittenOrReplacedWhole) {
  const TemporaryDirectory directory;
  const fs::path file = directory / "a result.json";
  writeWholeFile(file, "first\n");
  EXPECT_EQ(contentOf(file), "first\n");
  writeWholeFile(file, "second, longer\r\n");
  EXPECT_EQ(contentOf(file), "second, longer\r\n");
  writeWholeFile(file, "");
  EXPECT_EQ(contentOf(file), "");
  EXPECT_EQ(filesIn(directory / "."), 1);
}

TEST(OutputTest, aPlaceThatIsNotThereIsSaid) {
  const TemporaryDirectory directory;
  EXPECT_THROW(writeWholeFile(directory / "none/result", "x"), OutputError);
  EXPECT_THROW(writeWholeFile(directory / ".", "x"), OutputError);
  EXPECT_EQ(filesIn(directory / "."), 0);
}

// The name leads to a directory, which no file can replace: only the renaming fails.
TEST(OutputTest, aFailedReplacementLeavesNothingBeside) {
  const TemporaryDirectory directory;
  const fs::path inner = directory / "inner";
  fs::create_directory(inner);
  EXPECT_THROW(writeWholeFile(inner / "missing" / "..", "x"), OutputError);
  EXPECT_EQ(filesIn(inner), 0);
  EXPECT_EQ(filesIn(directory / "."), 1);
}

#if !defined(_WIN32)

TEST(OutputTest, aFullDeviceIsSaidAndStaysADevice) {
  EXPECT_THROW(writeWholeFile("/dev/full", "x"), OutputError);
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(OutputTest, aLinkKeepsLeadingToItsFile) {
  const TemporaryDirectory directory;
  directory.write("real", "old");
  fs::create_symlink("real", directory / "link");
  writeWholeFile(directory / "link", "new");
  EXPECT_TRUE(fs::is_symlink(directory / "link"));
  EXPECT_EQ(contentOf(directory / "real"), "new");
}

mode_t modeOf(const fs::path& file) {
  struct stat status {};
  EXPECT_EQ(::stat(file.c_str(), &status), 0);
  return status.st_mode & 07777;
}

TEST(OutputTest, aFileThatIsReplacedKeepsItsModeAndANewOneFollowsTheUmask) {
  const TemporaryDirectory directory;
  const fs::path file = directory / "file";
  const mode_t before = ::umask(027);
  writeWholeFile(file, "first");
  EXPECT_EQ(modeOf(file), 0640U);
  for (const mode_t mode : {0600U, 0604U, 0666U, 0755U}) {
    ASSERT_EQ(::chmod(file.c_str(), mode), 0);
    writeWholeFile(file, "next");
    EXPECT_EQ(modeOf(file), mode);
  }
  ::umask(before);
}

TEST(OutputTest, aFileThatIsReplacedKeepsItsOwner) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "only the super-user may give files away";
  }
  const TemporaryDirectory directory;
  const fs::path file = directory.write("file", "first");
  ASSERT_EQ(::chown(file.c_str(), 12, 34), 0);
  writeWholeFile(file, "next");
  struct stat status {};
  ASSERT_EQ(::stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 12U);
  EXPECT_EQ(status.st_gid, 34U);
}

TEST(OutputTest, theLongestNameIsWritten) {
  const TemporaryDirectory directory;
  const fs::path file = directory / std::string(255, 'x');
  writeWholeFile(file, "first");
  EXPECT_EQ(contentOf(file), "first");
}

#endif

}  // namespace
}  // namespace kestrel::host
