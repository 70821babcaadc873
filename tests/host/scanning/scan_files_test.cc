#include "host/scanning/scan_files.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/basics/text_input.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;
using Names = std::vector<std::string>;

TEST(ScanFilesTest, extensionsCountInAnyCase) {
  const struct {
    const char* name;
    bool isMedia;
  } rows[] = {{"a.mxf", true},       {"a.MXF", true},   {"a.Wav", true},   {"a.b.mov", true},
              {"a.txt", false},      {"mxf", false},    {".mxf", false},   {"a.mxf.part", false},
              {"a.mx", false},       {"a.", false},     {"a.mxf ", false}, {"", false},
              {"a.\xc3\x89", false}, {"dir/a.ts", true}};
  for (const auto& row : rows) {
    EXPECT_EQ(hasMediaExtension(row.name), row.isMedia) << row.name;
  }
}

TEST(ScanFilesTest, directoriesAreSearchedInTheOrderOfNames) {
  const TemporaryDirectory directory;
  const fs::path root = directory / "in";
  for (const char* name : {"b", "a/z", "a/y", "c.mxf"}) {
    fs::create_directories(root / name);
  }
  Names expected;
  for (const char* name : {"in/b.mxf", "in/z.mxf", "in/a/2.mxf", "in/a/y/1.mxf", "in/a/z/1.mxf",
                           "in/b/1.mxf", "in/c.mxf/1.mxf"}) {
    expected.push_back(directory.write(name, ""));
    directory.write(std::string(name) + ".txt", "");
  }
  const ScanFiles found = filesOfScan({root});
  EXPECT_EQ(found.files, expected);
  EXPECT_TRUE(found.problems.empty());
}

TEST(ScanFilesTest, aCircleOfLinksIsNotFollowed) {
  const TemporaryDirectory directory;
  fs::create_directory(directory / "in");
  const fs::path file = directory.write("in/a.mxf", "");
  fs::create_directory_symlink(directory / "in", directory / "in/again");
  fs::create_directory_symlink(directory / "in", directory / "in/again.mxf");
  EXPECT_EQ(filesOfScan({directory / "in"}).files, (Names{file}));
  // A link that is named is followed.
  EXPECT_EQ(filesOfScan({directory / "in/again"}).files, (Names{directory / "in/again/a.mxf"}));
}

// Made from the inside, since no path of such a length is taken by the system.
TEST(ScanFilesTest, aFolderTooDeepForAPathIsSaid) {
  const TemporaryDirectory directory;
  const fs::path before = fs::current_path();
  const std::string name(200, 'x');
  fs::current_path(directory / ".");
  for (int depth = 0; depth < 30; ++depth) {
    fs::create_directory(name);
    fs::current_path(name);
  }
  fs::current_path(before);
  const ScanFiles found = filesOfScan({directory / "."});
  ASSERT_EQ(found.problems.size(), 1u);
  EXPECT_NE(found.problems[0].find("cannot be reached: File name too long"), std::string::npos);
}

TEST(ScanFilesTest, whatIsNamedIsTakenEvenIfItIsNotThere) {
  EXPECT_EQ(filesOfScan({"/none/a.txt", "/none/b"}).files, (Names{"/none/a.txt", "/none/b"}));
}

TEST(ScanFileListTest, namesEndAsTheyAreSaidTo) {
  const TemporaryDirectory directory;
  const struct {
    std::string text;
    NameEnd end;
    Paths names;
  } rows[] = {{"", NameEnd::kNewline, {}},
              {"a\nb\n", NameEnd::kNewline, {"a", "b"}},
              {"a\n\nb", NameEnd::kNewline, {"a", "b"}},
              {" a b \n", NameEnd::kNewline, {" a b "}},
              {"a\r\n", NameEnd::kNewline, {"a\r"}},
              {"\xe9\n", NameEnd::kNewline, {"\xe9"}},
              {std::string("a\nb\0c\0", 6), NameEnd::kNull, {"a\nb", "c"}},
              {std::string("\0\0a", 3), NameEnd::kNull, {"a"}}};
  for (const auto& row : rows) {
    EXPECT_EQ(namesFrom(directory.write("list", row.text), row.end), row.names) << row.text;
  }
}

TEST(ScanFileListTest, aListThatCannotBeReadIsRefused) {
  EXPECT_THROW(namesFrom("/none/list", NameEnd::kNewline), InputError);
  EXPECT_THROW(namesFrom("/", NameEnd::kNewline), InputError);
}

}  // namespace
}  // namespace kestrel::host
