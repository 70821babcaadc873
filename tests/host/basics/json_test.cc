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
