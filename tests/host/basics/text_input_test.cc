#include "host/basics/text_input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::filesystem::path& file, char end) {
  TextInput input(file);
  Lines lines;
  for (std::string line; input.takeLine(line, end);) {
    lines.push_back(line + (input.isLineComplete() ? "|" : ""));
  }
  return lines;
}

std::string refusalOf(const std::filesystem::path& file) {
  try {
    TextInput(file).takeRest(10);
    return "read";
  } catch (const InputError& error) {
    return error.what();
  }
}

TEST(TextInputTest, linesEndAsTheyAreSaidTo) {
  const TemporaryDirectory directory;
  const struct {
    std::string text;
    char end;
    Lines lines;
  } rows[] = {{"", '\n', {}},
              {"a\nb\n", '\n', {"a|", "b|"}},
              {"a\n\nb", '\n', {"a|", "|", "b"}},
              {"\n", '\n', {"|"}},
              {"a\r\n", '\n', {"a\r|"}},
              {std::string("a\nb\0c", 5), '\0', {"a\nb|", "c"}}};
  for (const auto& row : rows) {
    EXPECT_EQ(linesOf(directory.write("text", row.text), row.end), row.lines) << row.text;
  }
}

TEST(TextInputTest, aLineMayBeLongerThanABlock) {
  const TemporaryDirectory directory;
  for (const std::size_t size : {65535U, 65536U, 65537U, 200000U}) {
    const std::string line(size, 'x');
    const auto file = directory.write("text", line + "\n" + line);
    EXPECT_EQ(linesOf(file, '\n'), (Lines{line + "|", line})) << size;
  }
}

TEST(TextInputTest, theRestEndsAtTheLimit) {
  const TemporaryDirectory directory;
  const auto file = directory.write("text", std::string(100000, 'x'));
  for (const std::size_t limit : {0U, 1U, 65536U, 99999U, 100000U, 100001U}) {
    EXPECT_EQ(TextInput(file).takeRest(limit).size(), std::min<std::size_t>(limit, 100000));
  }
}

TEST(TextInputTest, whatCannotBeReadIsSaid) {
  EXPECT_EQ(refusalOf("/none/text"), "\"/none/text\" cannot be read: No such file or directory");
#if !defined(_WIN32)
  EXPECT_EQ(refusalOf("/"), "\"/\" cannot be read: Is a directory");
  EXPECT_EQ(refusalOf("/proc/self/mem"), "\"/proc/self/mem\" cannot be read: Input/output error");
#endif
}

}  // namespace
}  // namespace kestrel::host
