// The expressions become a script at the end of the page, which leaves their values in an element
// of its own; Chromium prints the elements when the page is loaded.
#include "tests/host/support/html_browser.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

constexpr char kBegin[] = "<pre id=\"kestrel-answers\">";
constexpr char kEnd[] = "</pre>";

std::string outputOf(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"),
                                                             &::pclose);
  std::string output;
  for (int unit = std::fgetc(pipe.get()); unit != EOF; unit = std::fgetc(pipe.get())) {
    output.push_back(static_cast<char>(unit));
  }
  return output;
}

// --blink-settings: the preferred scheme is 0 for dark, 1 for light.
std::string command(const TemporaryDirectory& directory, const std::string& task,
                    const BrowserOptions& options) {
  return fmt::format(
      "timeout -k 5 60 chromium --headless --no-sandbox --disable-gpu --no-first-run "
      "--disable-background-networking --disable-component-update --disable-sync "
      "--disable-dev-shm-usage --hide-scrollbars --window-size=1280,1400 --user-data-dir='{}' "
      "--blink-settings=preferredColorScheme={} {} 'file://{}' 2>/dev/null",
      (directory / "profile").string(), options.isDark ? 0 : 1, task,
      (directory / "page.html").string());
}

// The page's elements as text, after it was loaded.
std::string domOf(const std::string& page, const BrowserOptions& options) {
  const TemporaryDirectory directory;
  directory.write("page.html", page);
  return outputOf(command(directory, "--dump-dom", options));
}

std::string questionsOf(const std::vector<std::string>& expressions) {
  std::string script = "<script>{const answers = [];\n";
  for (const std::string& expression : expressions) {
    script += fmt::format(
        "try {{ answers.push({}) }} catch (error) {{ answers.push(String(error)) }}\n", expression);
  }
  return script +
         "const answer = document.createElement('pre');\n"
         "answer.id = 'kestrel-answers';\n"
         "answer.textContent = encodeURIComponent(JSON.stringify(answers));\n"
         "document.body.append(answer);}</script></body>";
}

std::string decoded(const std::string& text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool isCoded = text[at] == '%' && at + 2 < text.size();
    plain.push_back(isCoded ? static_cast<char>(std::stoi(text.substr(at + 1, 2), nullptr, 16))
                            : text[at]);
    at += isCoded ? 2 : 0;
  }
  return plain;
}

}  // namespace

bool hasBrowser() { return std::system("command -v chromium >/dev/null") == 0; }

nlohmann::json askPage(const std::string& page, const std::vector<std::string>& expressions,
                       const BrowserOptions& options) {
  std::string asking = page;
  asking.replace(asking.rfind("</body>"), 7, questionsOf(expressions));
  const std::string dom = domOf(asking, options);
  const std::size_t begin = dom.rfind(kBegin);
  if (begin == std::string::npos) {
    throw std::runtime_error("no answers in the page: " + dom.substr(0, 2000));
  }
  const std::size_t first = begin + sizeof kBegin - 1;
  return nlohmann::json::parse(decoded(dom.substr(first, dom.find(kEnd, first) - first)));
}

void takePicture(const std::string& page, const std::filesystem::path& picture,
                 const BrowserOptions& options) {
  const TemporaryDirectory directory;
  directory.write("page.html", page);
  outputOf(command(directory, fmt::format("--screenshot='{}'", picture.string()), options));
}

}  // namespace kestrel::host
