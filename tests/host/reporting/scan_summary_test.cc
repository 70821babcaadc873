#include "host/reporting/scan_summary.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <future>
#include <sstream>
#include <thread>

#include "host/reading/media_facts.h"
#include "host/scanning/scan.h"
#include "tests/host/support/html_documents.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

TEST(ScanSummaryTest, aConformingFileHasTheExpectedLayout) {
  const ResultFacts facts = factsOf(conformingDocument());
  EXPECT_EQ(facts.verdict, "conforms");
  EXPECT_EQ(facts.layout, "Stereo");
  EXPECT_EQ(facts.exitCode, 0);
  EXPECT_TRUE(facts.findings.empty());
}

TEST(ScanSummaryTest, anotherFileHasTheBestSupportedLayout) {
  EXPECT_EQ(factsOf(brokenDocument()).layout, "5.1 Mix, Mono, Mono");
  EXPECT_EQ(factsOf(codedDocument()).layout, "Stereo, Dolby E");
  EXPECT_EQ(factsOf(unexaminedDocument()).layout, "none");
}

TEST(ScanSummaryTest, aFindingCountsOncePerFile) {
  Json document = brokenDocument();
  document["findings"].push_back(document["findings"][0]);
  EXPECT_EQ(factsOf(document).findings,
            (std::vector<std::string>{"file-truncated", "formats-differ", "label-order"}));
  EXPECT_EQ(factsOf(unexaminedDocument()).findings, (std::vector<std::string>{"no-media"}));
}

TEST(ScanSummaryTest, theHighestCountComesFirst) {
  const std::vector<std::pair<std::string, std::size_t>> expected = {{"c", 3}, {"a", 1}, {"b", 1}};
  EXPECT_EQ(byCount({{"a", 1}, {"b", 1}, {"c", 3}}), expected);
}

TEST(ScanSummaryTest, resultsAreCountedInTables) {
  ScanSummary summary;
  for (const Json& document : allDocuments()) {
    summary.add(factsOf(document));
  }
  EXPECT_EQ(summary.files, 4U);
  EXPECT_EQ(summary.exitCode, 2);
  EXPECT_EQ(summaryText(summary),
            "Verdict           Files\n"
            "conforms          1\n"
            "does not conform  1\n"
            "identified        1\n"
            "not examined      1\n"
            "\n"
            "Layout               Files\n"
            "5.1 Mix, Mono, Mono  1\n"
            "Stereo               1\n"
            "Stereo, Dolby E      1\n"
            "none                 1\n"
            "\n"
            "Finding         Files\n"
            "file-truncated  1\n"
            "formats-differ  1\n"
            "label-order     1\n"
            "no-media        1\n");
}

// Refuses every file, two at the same moment, in words that take a pipe several times its room.
class RefusingReader : public MediaReader {
 public:
  ReadMedia read(const std::filesystem::path& /*file*/) const override {
    const std::size_t place = ++begun_;
    while (begun_ < place + place % 2) {
      std::this_thread::yield();
    }
    throw NotExamined("refused", std::string(1U << 20, '-'));
  }

 private:
  mutable std::atomic<std::size_t> begun_ = 0;
};

std::string allFrom(const std::filesystem::path& pipe) {
  std::ifstream stream(pipe, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// What two threads write at once into a pipe that is full comes out mixed; one lock keeps them from
// that and from counting at once.
TEST(ScanSummaryTest, theThreadsOfAScanWriteAndCountOneAfterTheOther) {
  constexpr std::ptrdiff_t kFiles = 20;
  const TemporaryDirectory directory;
  std::filesystem::create_directory(directory / "in");
  for (int number = 0; number < kFiles; ++number) {
    directory.write(fmt::format("in/{}.wav", number), "");
  }
  ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
  std::future<std::string> written = std::async(std::launch::async, allFrom, directory / "pipe");
  ScanRequest request;
  request.paths = {directory / "in"};
  request.inspect.reader = std::make_shared<RefusingReader>();
  request.output = directory / "pipe";
  request.jobs = 2;
  testing::internal::CaptureStderr();
  EXPECT_EQ(scan(request), ExitCode::kNotExamined);
  EXPECT_NE(testing::internal::GetCapturedStderr().find(fmt::format("refused  {}\n", kFiles)),
            std::string::npos);
  const std::string text = written.get();
  EXPECT_EQ(std::ranges::count(text, '\n'), kFiles);
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(Json::accept(line)) << line.substr(0, 40);
  }
}

}  // namespace
}  // namespace kestrel::host
