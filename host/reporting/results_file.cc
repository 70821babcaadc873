#include "host/reporting/results_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "host/basics/file_names.h"
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

// The next line, without its newline. False at the end of the file; a line that is too long is cut
// behind what is taken of one.
class Lines {
 public:
  explicit Lines(std::istream& stream) : stream_(stream), buffer_(kLongestLine + 2) {}

  bool take() {
    stream_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    const auto count = static_cast<std::size_t>(stream_.gcount());
    isComplete_ = stream_.good();
    line_ = {buffer_.data(), isComplete_ ? count - 1 : count};
    return count > 0;
  }

  std::string_view line() const { return line_; }
  bool isComplete() const { return isComplete_; }
  bool isTooLong() const { return line_.size() > kLongestLine; }

 private:
  std::istream& stream_;
  std::vector<char> buffer_;
  std::string_view line_;
  bool isComplete_ = false;
};

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

std::ifstream open(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::error_code ignored;
  if (!stream || std::filesystem::is_directory(file, ignored)) {
    throw NoResults(fmt::format("\"{}\" cannot be read", printable(utf8FromPath(file))));
  }
  return stream;
}

}  // namespace

ResultsEnd readResultsFile(const std::filesystem::path& file,
                           const std::function<void(const Json&)>& use) {
  std::ifstream stream = open(file);
  ResultsEnd end;
  std::uintmax_t number = 0;
  for (Lines lines(stream); lines.take();) {
    ++number;
    if (lines.isTooLong()) {
      reject(file, number, "longer than 16 MiB");
    }
    const Json document = parsedJson<Json>(lines.line());
    if (!isResult(document)) {
      end.isTorn = !lines.isComplete() && mayBeTorn(lines.line());
      if (!end.isTorn) {
        reject(file, number, "no result of kestrel");
      }
      break;
    }
    end.lacksNewline = !lines.isComplete();
    end.size += lines.line().size() + (lines.isComplete() ? 1 : 0);
    useWhole(document, use, file, number);
  }
  return end;
}

}  // namespace kestrel::host
