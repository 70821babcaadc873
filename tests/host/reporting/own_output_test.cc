#include "host/reporting/own_output.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrel::host {
namespace {

TEST(OwnOutputTest, itIsKnownByItsBegin) {
  const struct {
    const char* begin;
    bool isOwn;
  } rows[] = {
      {R"({"schema":"kestrel-result-1","kestrel":"1.0.0",)", true},
      {"{\n  \"schema\": \"kestrel-result-1\",\n", true},
      {"[\n  {\n    \"schema\": \"kestrel-result-2\",\n", true},
      {R"({"schema":"other-result-1"})", false},
      {R"([[{"schema":"kestrel-result-1"}]])", false},
      {R"({"file":"a","schema":"kestrel-result-1"})", false},
      {"<!DOCTYPE html>\n<meta name=\"generator\" content=\"kestrel\">", true},
      {"<!DOCTYPE html>\n<meta name=\"generator\" content=\"other\">", false},
      {"text <meta name=\"generator\" content=\"kestrel\">", false},
      {"File      a.wav (Wave, 2 tracks)\nVerdict   The file", true},
      {"File      a.wav\nDeclared  8b\nVerdict   The file", true},
      {"File      a.wav\n", false},
      {"File a.wav\nVerdict   The file", false},
      {"Verdict     Files\nidentified  2\n\nLayout  Files\n", true},
      {"Verdict     of the jury\n\nLayout  Files\n", false},
      {"", false},
      {"precious\n", false},
      {"RIFF", false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(isOwnOutput(row.begin), row.isOwn) << row.begin;
  }
}

}  // namespace
}  // namespace kestrel::host
