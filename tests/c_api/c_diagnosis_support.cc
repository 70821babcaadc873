#include "tests/c_api/c_diagnosis_support.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>

namespace kestrel::test {
namespace {

void expectOneSentenceNaming(const std::string& sentence, const std::vector<std::string>& words) {
  SCOPED_TRACE(sentence);
  ASSERT_FALSE(sentence.empty());
  EXPECT_TRUE(sentence.front() >= 'A' && sentence.front() <= 'Z');
  EXPECT_EQ(sentence.back(), '.');
  EXPECT_EQ(sentence.find(". "), std::string::npos) << "a second sentence";
  EXPECT_EQ(sentence.find('\n'), std::string::npos);
  for (const std::string& word : words) EXPECT_NE(sentence.find(word), std::string::npos) << word;
}

}  // namespace

KestrelStream withKeys(KestrelStream made, std::int32_t key1, std::int32_t key2,
                       std::int32_t key3) {
  made.formatKey1 = key1;
  made.formatKey2 = key2;
  made.formatKey3 = key3;
  return made;
}

std::ostream& operator<<(std::ostream& out, const Found& found) {
  return out << "code " << found.code << " service " << found.service << " slot " << found.slot
             << " stream " << found.stream << " track " << found.track << " first " << found.first
             << " second " << found.second << " text " << found.textOffset << "+"
             << found.textLength;
}

Diagnosis::Diagnosis(const char* description, const Streams& streams)
    : Diagnosis(Options{}, description, streams) {}

Diagnosis::Diagnosis(const Options& options, const char* description, const Streams& streams) {
  KestrelRequest asked = request(description, streams);
  asked.surroundChannelOrder = options.order;
  asked.reportAll = options.reportAll ? 1 : 0;
  asked.surroundCheck = options.surroundCheck ? 1 : 0;
  KestrelAnalysis* analysis = nullptr;
  EXPECT_EQ(kestrelAnalyse(&asked, &analysis, nullptr, nullptr), KESTREL_OK);
  analysis_.reset(analysis);
}

Diagnosis Diagnosis::withoutSurroundCheck(const char* description, const Streams& streams) {
  return {{.surroundCheck = false}, description, streams};
}

Diagnosis Diagnosis::reportingAll(const char* description, const Streams& streams) {
  return {{.reportAll = true}, description, streams};
}

Diagnosis Diagnosis::withOrder(const char* order, const char* description, const Streams& streams) {
  return {{.order = order}, description, streams};
}

std::int32_t Diagnosis::outcome() const {
  std::int32_t outcome = -1;
  EXPECT_EQ(kestrelOutcome(analysis_.get(), &outcome, nullptr), KESTREL_OK);
  return outcome;
}

std::vector<Found> Diagnosis::findings() const {
  std::int32_t count = -1;
  EXPECT_EQ(kestrelFindingCount(analysis_.get(), &count), KESTREL_OK);
  std::vector<Found> all;
  for (std::int32_t i = 0; i < count; ++i) all.push_back(findingAt(i));
  return all;
}

std::string Diagnosis::sentence(std::int32_t index) const {
  char text[1000] = "";
  std::size_t needed = 0;
  EXPECT_EQ(kestrelFindingText(analysis_.get(), index, text, sizeof text, &needed), KESTREL_OK);
  EXPECT_EQ(std::string(text).size() + 1, needed);
  return text;
}

std::vector<std::int32_t> Diagnosis::describedTotals() const {
  std::vector<std::int32_t> totals(200, -1);
  std::size_t needed = 0;
  EXPECT_EQ(kestrelDescribedTotals(analysis_.get(), totals.data(), totals.size(), &needed),
            KESTREL_OK);
  totals.resize(needed);
  return totals;
}

Found Diagnosis::findingAt(std::int32_t index) const {
  KestrelFinding f{};
  f.structSize = sizeof f;
  EXPECT_EQ(kestrelGetFinding(analysis_.get(), index, &f), KESTREL_OK);
  EXPECT_EQ(f.reserved, 0);
  return {f.code,  f.service, f.slot,       f.stream,    f.track,
          f.first, f.second,  f.textOffset, f.textLength};
}

void expectDiagnosis(const Diagnosis& diagnosis, std::int32_t outcome,
                     const std::vector<Expected>& expected) {
  EXPECT_EQ(diagnosis.outcome(), outcome);
  std::vector<Found> found;
  for (const Expected& one : expected) found.push_back(one.found);
  ASSERT_EQ(diagnosis.findings(), found);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    expectOneSentenceNaming(diagnosis.sentence(static_cast<std::int32_t>(i)), expected[i].words);
  }
}

}  // namespace kestrel::test
