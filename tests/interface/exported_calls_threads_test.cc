// Every exported function is called by eight threads at once, each with arguments of its own, and
// answers what it answered to one thread alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <barrier>
#include <cstddef>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "tests/interface/exported_calls.h"
#include "tests/test_rounds.h"

namespace kestrel::test {
namespace {

constexpr std::size_t kThreads = 8;

// A call and its answers to a single thread, by the numbers of the arguments.
struct Question {
  ExportedCall call;
  std::vector<std::string> answers;
};

Question questionOf(const ExportedCall& call) {
  Question question{call, {}};
  for (std::int32_t number = 0; number < kNumbers; ++number)
    question.answers.push_back(call.answer(number));
  return question;
}

std::vector<Question> questions() {
  std::vector<Question> all;
  for (const ExportedCall& call : cxxCalls()) all.push_back(questionOf(call));
  for (const ExportedCall& call : plainCCalls()) all.push_back(questionOf(call));
  return all;
}

using Names = std::set<std::string>;

// Asks everything once, each `start` beginning elsewhere, and notes what answers otherwise.
void ask(const std::vector<Question>& all, std::size_t start, Names& wrong) {
  for (std::size_t i = 0; i < all.size() * kNumbers; ++i) {
    const Question& question = all[(start + i) % all.size()];
    const std::size_t number = (start + i / all.size()) % kNumbers;
    if (question.call.answer(static_cast<std::int32_t>(number)) != question.answers[number])
      wrong.insert(std::string(question.call.name));
  }
}

// The first thread alone also asks for the text that threads must not use at once.
Names askInThreads(const std::vector<Question>& all, int rounds) {
  const std::vector<Question> symbol = {questionOf(symbolCall())};
  std::array<Names, kThreads> wrong;
  std::barrier start(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      start.arrive_and_wait();
      for (int i = 0; i < rounds; ++i) {
        ask(all, t * 7, wrong[t]);
        if (t == 0) ask(symbol, 0, wrong[t]);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  Names sum;
  for (Names& names : wrong) sum.merge(names);
  return sum;
}

TEST(ExportedCalls, AnswerEightThreadsAsTheyAnswerOne) {
  EXPECT_EQ(askInThreads(questions(), rounds(40)), Names{});
}

TEST(ExportedCalls, AreCallsOfAllExportedNames) {
  Names called = {std::string(symbolCall().name)};
  for (const ExportedCall& call : cxxCalls()) called.emplace(call.name);
  for (const ExportedCall& call : plainCCalls()) called.emplace(call.name);
  Names exported;
  std::ifstream list(KESTREL_EXPORTED_NAMES);
  for (std::string name; list >> name;) exported.insert(name);
  EXPECT_EQ(called, exported);
}

// A call that answers all numbers alike would hide that arguments got mixed up.
TEST(ExportedCalls, AnswerDifferentNumbersDifferently) {
  const Names constant = {"getRowCount", "kestrelVersion", "kestrelAbiVersion",
                          "kestrelCatalogueSize"};
  for (const Question& question : questions()) {
    const std::set<std::string> different(question.answers.begin(), question.answers.end());
    const bool alike = constant.contains(std::string(question.call.name));
    EXPECT_EQ(different.size() == 1, alike) << question.call.name;
  }
}

}  // namespace
}  // namespace kestrel::test
