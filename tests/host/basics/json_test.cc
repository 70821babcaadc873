#include "host/basics/json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

namespace kestrel::host {
namespace {

std::string nested(const std::string& open, const std::string& inner, const std::string& close,
                   std::size_t levels) {
  std::string text = inner;
  for (std::size_t level = 0; level < levels; ++level) {
    text.insert(0, open).append(close);
  }
  return text;
}

std::string objectOf(std::size_t members) {
  std::string text;
  for (std::size_t member = 0; member < members; ++member) {
    text += (text.empty() ? "{\"" : ",\"") + std::to_string(member) + "\":1";
  }
  return text + "}";
}

bool isTaken(const std::string& text) {
  const bool isJson = !parsedJson<Json>(text).is_discarded();
  EXPECT_EQ(isJson, !parsedJson<ForeignJson>(text).is_discarded()) << text.substr(0, 99);
  return isJson;
}

TEST(JsonTest, fieldsStayInTheirOrder) {
  EXPECT_EQ(parsedJson<Json>(R"({"b":[1,-2,0.5,null,true],"a":"x"})").dump(),
            R"({"b":[1,-2,0.5,null,true],"a":"x"})");
}

TEST(JsonTest, whatCannotBeSeenIsWrittenAsAnEscape) {
  const Json json = {
      {"a", "\x1b\x7f\xc2\x9b é\xc2\xa0\xe2\x80\xae\xd8\x9c\xe2\x82\xac\xef\xbb\xbf"},
      {"\xe2\x80\xa8", "\xf0\x9f\x8e\xac"}};
  EXPECT_EQ(jsonText(json),
            "{\"a\":\"\\u001b\\u007f\\u009b é\xc2\xa0\\u202e\\u061c\xe2\x82\xac\\ufeff\","
            "\"\\u2028\":\"\xf0\x9f\x8e\xac\"}");
  EXPECT_EQ(parsedJson<Json>(jsonText(json)), json);
  EXPECT_EQ(jsonText({{"a", 1}}, 2), "{\n  \"a\": 1\n}");
}

TEST(JsonTest, whatIsNoJsonIsDiscarded) {
  for (const char* text : {"", " ", "{", "[1,]", "{\"a\":}", "\"\xff\"", "1 2", "1e999", "<a/>"}) {
    EXPECT_FALSE(isTaken(text)) << text;
  }
}

TEST(JsonTest, theDepthIsBounded) {
  EXPECT_TRUE(isTaken(nested("[", "1", "]", kDeepestJson)));
  EXPECT_FALSE(isTaken(nested("[", "1", "]", kDeepestJson + 1)));
  EXPECT_TRUE(isTaken(nested("{\"a\":", "1", "}", kDeepestJson)));
  EXPECT_FALSE(isTaken(nested("{\"a\":", "1", "}", kDeepestJson + 1)));
  EXPECT_TRUE(isTaken("[" + nested("[", "1", "]", kDeepestJson - 1) + "," +
                      nested("[", "1", "]", kDeepestJson - 1) + "]"));
  EXPECT_FALSE(isTaken(std::string(1'000'000, '[')));
  EXPECT_FALSE(isTaken(nested("{\"a\":", "1", "}", 2'000)));
}

TEST(JsonTest, anObjectThatIsSearchedHasFewMembers) {
  EXPECT_FALSE(parsedJson<Json>(objectOf(kMostMembers)).is_discarded());
  EXPECT_TRUE(parsedJson<Json>(objectOf(kMostMembers + 1)).is_discarded());
  EXPECT_TRUE(parsedJson<Json>(objectOf(500'000)).is_discarded());
  EXPECT_EQ(parsedJson<ForeignJson>(objectOf(500'000)).size(), 500'000U);
}

}  // namespace
}  // namespace kestrel::host
