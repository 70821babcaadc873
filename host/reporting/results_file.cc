#include "host/reporting/results_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "host/basics/file_names.h"
#include "host/basics/text_input.h"
#include "host/basics/utf8.h"
#include "host/reporting/result_json.h"

namespace kestrel::host {
namespace {

// Every line begins with it, so that a torn line of ours is told from another file's text.
std::string beginOfLine() { return fmt::format(R"({{"schema":"{}")", kResultSchema); }

bool mayBeTorn(std::string_view text) {
  const std::string begin = beginOfLine();
  const std::size_t length = std::min(begin.size(), text.size());
  return text.substr(0, length) == std::string_view(begin).substr(0, length);
}

bool isResult(const Json& document) {
  if (!document.is_object()) {
    return false;
  }
  const auto schema = document.find("schema");
  return schema != document.end() && *schema == kResultSchema && document.contains("file");
}

[[noreturn]] void reject(const std::filesystem::path& file, std::uintmax_t line) {
  throw NoResults(fmt::format("\"{}\" is no file of results: line {} is no result of kestrel",
                              printable(utf8FromPath(file)), line));
}

// A document of the right schema may still lack members.
void useWhole(const Json& document, const std::function<void(const Json&)>& use,
              const std::filesystem::path& file, std::uintmax_t line) {
  try {
    use(document);
  } catch (const std::exception& error) {
    throw NoResults(fmt::format("\"{}\": line {} is not a whole result: {}",
                                printable(utf8FromPath(file)), line, printable(error.what())));
  }
}

}  // namespace

ResultsEnd readResultsFile(const std::filesystem::path& file,
                           const std::function<void(const Json&)>& use) {
  TextInput input(file);
  ResultsEnd end;
  std::uintmax_t number = 0;
  for (std::string line; input.takeLine(line);) {
    ++number;
    const bool isComplete = input.isLineComplete();
    const Json document = Json::parse(line, nullptr, /*allow_exceptions=*/false);
    if (!isResult(document)) {
      end.isTorn = !isComplete && mayBeTorn(line);
      if (!end.isTorn) {
        reject(file, number);
      }
      break;
    }
    end.lacksNewline = !isComplete;
    end.size += line.size() + (isComplete ? 1 : 0);
    useWhole(document, use, file, number);
  }
  return end;
}

}  // namespace kestrel::host
