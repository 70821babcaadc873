// A declaration begins with the word that exports it and ends at the next semicolon. Comments hold
// neither, once they are taken away; the last word of a parameter is its name.
#include "tests/robustness/declarations.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace kestrel::test {
namespace {

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

void removeAll(std::string& text, const std::string& begin, const std::string& end) {
  for (auto at = text.find(begin); at != std::string::npos; at = text.find(begin, at)) {
    const auto behind = text.find(end, at + begin.size());
    text.erase(at, behind == std::string::npos ? behind : behind + end.size() - at);
  }
}

std::vector<std::string> parametersIn(const std::string& list) {
  std::vector<std::string> names;
  const std::regex lastWord(R"((\w+)\s*(,|$))");
  for (std::sregex_iterator at(list.begin(), list.end(), lastWord), end; at != end; ++at)
    if ((*at)[1] != "void") names.push_back((*at)[1]);
  return names;
}

void addDeclarations(std::string text, std::vector<Declaration>& found) {
  removeAll(text, "/*", "*/");
  removeAll(text, "//", "\n");
  removeAll(text, "#", "\n");
  const std::regex declaration(R"((?:KESTREL_EXPORT|KESTREL_FUNCTION)\s[^;(]*?(\w+)\(([^;]*)\);)");
  for (std::sregex_iterator at(text.begin(), text.end(), declaration), end; at != end; ++at)
    found.push_back({(*at)[1], parametersIn((*at)[2])});
}

}  // namespace

std::vector<Declaration> declarations(const std::string& directory) {
  std::vector<Declaration> found;
  for (const auto& entry : std::filesystem::directory_iterator(directory))
    if (entry.path().extension() == ".h") addDeclarations(contentOf(entry.path()), found);
  return found;
}

std::set<std::string> namesIn(const std::string& file) {
  std::ifstream lines(file);
  if (!lines) throw std::runtime_error("cannot read " + file);
  return {std::istream_iterator<std::string>(lines), {}};
}

}  // namespace kestrel::test
