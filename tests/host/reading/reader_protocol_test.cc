#include "host/reading/reader_protocol.h"

#include <gtest/gtest.h>

#include "host/reading/media_facts.h"

namespace kestrel::host {
namespace {

using namespace std::string_literals;

TEST(ReaderProtocolTest, requestsAreTakenInTurn) {
  std::string text = textOf(ReaderRequest{"0", "a\nfile \xff"}) + textOf(ReaderRequest{"", "b"});
  const auto first = takeRequest(text);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->parseSpeed, "0");
  EXPECT_EQ(first->file, "a\nfile \xff");
  const auto second = takeRequest(text);
  ASSERT_TRUE(second);
  EXPECT_EQ(second->parseSpeed, "");
  EXPECT_EQ(second->file, "b");
  EXPECT_EQ(text, "");
}

TEST(ReaderProtocolTest, whatStandsBehindANullByteIsNoFileName) {
  std::string text = textOf(ReaderRequest{"", "a\0b"s});
  EXPECT_EQ(takeRequest(text)->file, "a");
  EXPECT_EQ(text, "");
}

TEST(ReaderProtocolTest, thePartOfARequestIsLeft) {
  const std::string whole = textOf(ReaderRequest{"0.5", "file"});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    std::string part = whole.substr(0, size);
    EXPECT_FALSE(takeRequest(part)) << size;
    EXPECT_EQ(part, whole.substr(0, size));
  }
}

TEST(ReaderProtocolTest, anAnswerComesBackAsItIs) {
  for (const ReaderAnswer& answer :
       {ReaderAnswer{false, 0, "{}"}, ReaderAnswer{false, 3, ""}, ReaderAnswer{true, 11, "half"},
        ReaderAnswer{false, 0, "\0\n\xff"s}}) {
    const std::string text = textOf(answer);
    const auto back = answerIn(text);
    ASSERT_TRUE(back) << text;
    EXPECT_EQ(back->isSignalled, answer.isSignalled);
    EXPECT_EQ(back->code, answer.code);
    EXPECT_EQ(back->output, answer.output);
    for (std::size_t size = 0; size < text.size(); ++size) {
      EXPECT_FALSE(answerIn(text.substr(0, size))) << size;
    }
    EXPECT_THROW(answerIn(text + "x"), NotExamined);
  }
}

TEST(ReaderProtocolTest, whatIsNoAnswerIsRefused) {
  for (const std::string& text :
       {"\n"s, "exited\n"s, "exited 0\n"s, "exited 0 \n"s, "exited 0 0 \n"s, "exited -1 0\n"s,
        "exited 0  0\n"s, "exited 0 -1\n"s, "ended 0 0\n"s, " exited 0 0\n"s, "exited x 0\n"s,
        "exited 0 99999999999999999999\n"s, "exited 9999999999 0\n"s, std::string(64, 'y')}) {
    EXPECT_THROW(answerIn(text), NotExamined) << text;
  }
}

}  // namespace
}  // namespace kestrel::host
