#include "host/declared_layout.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

TEST(DeclaredLayoutTest, onlyR123DeclarationsHoldACode) {
  EXPECT_EQ(declaredR123Code("EBU R 123: 8b"), "8b");
  EXPECT_EQ(declaredR123Code("EBU R 123: 16f"), "16f");
  for (const char* text :
       {"", "8b", "EBU R 48: 2a", "EBU R 123:8b", "EBU R 123", " EBU R 123: 8b"}) {
    EXPECT_EQ(declaredR123Code(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace kestrel::host
