#include "analyser/leading_number.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace kestrel {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(LeadingNumber, ReadsTheNumberAtTheFront) {
  const struct {
    std::wstring text;
    std::int64_t number;
  } rows[] = {
      {L"", 0},
      {L"7", 7},
      {L"3-4", 3},
      {L"2001-3 / 4-1", 2001},
      {L"007", 7},
      {L"  12x", 12},
      {L"\t\n\v\f\r 5", 5},
      {L"+5", 5},
      {L"-5", -5},
      {L" -5-6", -5},
      {L"+-5", 0},
      {L"--5", 0},
      {L"- 5", 0},
      {L"+", 0},
      {L"-", 0},
      {L"x5", 0},
      {L".5", 0},
      {L"0x10", 0},
      {L"\b5", 0},  // next to the tab, but no space
      {L"\x0E"
       L"5",
       0},
      {L"\u00A05", 0},
      {L"\u0665", 0},  // a digit, but not an ASCII one
      {L"9223372036854775807", kMax},
      {L"9223372036854775808", kMax},
      {L"9223372036854775810", kMax},
      {L"18446744073709551617", kMax},
      {L"-9223372036854775808", kMin},
      {L"-9223372036854775807", kMin + 1},
      {L"-9223372036854775809", kMin},
      {L"922337203685477580", 922337203685477580},
      {std::wstring(10000, L'9'), kMax},
      {L"-" + std::wstring(10000, L'9'), kMin},
      {std::wstring(10000, L'0') + L"3", 3},
      {std::wstring(10000, L' ') + L"3", 3},
      {std::wstring(L"1\0002", 3), 1},
  };
  for (const auto& row : rows)
    EXPECT_EQ(leadingNumber(row.text), row.number) << ::testing::PrintToString(row.text);
}

TEST(LeadingNumber, ReadsBothWidthsAlike) {
  const struct {
    const char* text;
    std::int64_t number;
  } rows[] = {
      {"", 0},
      {"3-4", 3},
      {" \t-5", -5},
      {"\xC2\xA0"
       "5",
       0},
      {"\xFF", 0},
      {"999999999999999999", 999999999999999999},
      {"x", 0},
      {"-00000000000000000000017", -17},
      {"9223372036854775807", kMax},
      {"-9223372036854775809", kMin},
  };
  for (const auto& row : rows) EXPECT_EQ(leadingNumber(row.text), row.number) << row.text;
}

}  // namespace
}  // namespace kestrel
