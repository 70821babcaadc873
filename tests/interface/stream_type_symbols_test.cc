// The names of stream types: one shared text, and copies of it.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tests/interface/stream_naming_support.h"
#include "tests/library_under_test.h"

namespace kestrel::test {
namespace {

std::string withNul(std::string_view text) { return std::string(text) + '\0'; }

TEST(StreamTypeSymbols, EveryTypeHasItsName) {
  for (StreamType type = 0; type <= kDolbyE; ++type) {
    const std::string_view name = kTypeNames[static_cast<std::size_t>(type)];
    const auto length = static_cast<std::int32_t>(name.size());
    EXPECT_STREQ(library().getStreamTypeSymbol(type), std::string(name).c_str());
    EXPECT_EQ(library().getStreamTypeSymbolicLength(type), length + 1) << name;
    const std::string text = written(name.size() + 1, [&](char* buffer) {
      EXPECT_EQ(library().getStreamTypeSymbolic(type, buffer), length) << name;
    });
    EXPECT_EQ(text, withNul(name));
  }
}

TEST(StreamTypeSymbols, TheSymbolicLengthCountsTheNulAndTheReturnedOneDoesNot) {
  EXPECT_EQ(library().getStreamTypeSymbolicLength(k51Mix), 8);
  char name[8];
  EXPECT_EQ(library().getStreamTypeSymbolic(k51Mix, name), 7);
  EXPECT_STREQ(name, "5.1 Mix");
}

TEST(StreamTypeSymbols, AnUnknownTypeRaises) {
  for (const StreamType type : kUnknownTypes) {
    SCOPED_TRACE(type);
    expectUnknownId([=] { library().getStreamTypeSymbol(type); });
    expectUnknownId([=] { library().getStreamTypeSymbolicLength(type); });
    char name[16] = "as it was";
    expectUnknownId([&] { library().getStreamTypeSymbolic(type, name); });
    EXPECT_STREQ(name, "as it was");
  }
}

TEST(StreamTypeSymbols, TheNextCallOverwritesTheText) {
  for (StreamType one = 0; one <= kDolbyE; ++one) {
    for (StreamType other = 0; other <= kDolbyE; ++other) {
      const char* first = library().getStreamTypeSymbol(one);
      const char* second = library().getStreamTypeSymbol(other);
      EXPECT_EQ(first, second);
      EXPECT_EQ(first, kTypeNames[static_cast<std::size_t>(other)]);
    }
  }
}

TEST(StreamTypeSymbols, AnUnknownTypeLeavesTheTextAsItWas) {
  const char* text = library().getStreamTypeSymbol(k71Mix);
  for (const StreamType type : kUnknownTypes) {
    expectUnknownId([=] { library().getStreamTypeSymbol(type); });
    EXPECT_STREQ(text, "7.1 Mix") << "after type " << type;
  }
}

TEST(StreamTypeSymbols, TheOtherNamingFunctionsLeaveTheTextAlone) {
  const char* text = library().getStreamTypeSymbol(kMono);
  char name[16];
  library().getStreamTypeSymbolic(kDolbyE, name);
  library().getStreamTypeSymbolicLength(kDolbyE);
  library().getStreamTypeName(22, 2, name);
  library().streamTypeFromStr("Stereo");
  library().serviceMapItemFromStr("Stereo,5.1 Mix");
  EXPECT_STREQ(text, "Mono");
}

}  // namespace
}  // namespace kestrel::test
