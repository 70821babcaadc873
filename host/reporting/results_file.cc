#include "host/reporting/results_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "host/basics/file_names.h"
#include "host/basics/text_input.h"
#include "host/basics/utf8.h"
#include "host/reporting/result_form.h"
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

[[noreturn]] void reject(const std::filesystem::path& file, std::uintmax_t line, const char* why) {
  throw NoResults(fmt::format("\"{}\" is no file of results: line {} is {}",
                              printable(utf8FromPath(file)), line, why));
}

[[noreturn]] void rejectForm(const std::filesystem::path& file, std::uintmax_t line,
                             const std::string& why) {
  throw NoResults(fmt::format("\"{}\": line {} is not a whole result: {}",
                              printable(utf8FromPath(file)), line, printable(why)));
}

// A document of the right schema may still lack members.
void useWhole(const Json& document, const std::function<void(const Json&)>& use,
              const std::filesystem::path& file, std::uintmax_t line) {
  if (const std::string error = formErrorIn(document); !error.empty()) {
    rejectForm(file, line, error);
  }
  try {
    use(document);
  } catch (const std::exception& error) {
    rejectForm(file, line, error.what());
  }
}

}  // namespace

ResultsEnd readResultsFile(const std::filesystem::path& file,
                           const std::function<void(const Json&)>& use) {
  TextInput input(file);
  ResultsEnd end;
  std::uintmax_t number = 0;
  for (std::string line; input.takeLine(line, '\n', kLongestLine);) {
    ++number;
    if (line.size() > kLongestLine) {
      reject(file, number, "longer than 16 MiB");
    }
    const bool isComplete = input.isLineComplete();
    const Json document = parsedJson<Json>(line);
    if (!isResult(document)) {
      end.isTorn = !isComplete && mayBeTorn(line);
      if (!end.isTorn) {
        reject(file, number, "no result of kestrel");
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
