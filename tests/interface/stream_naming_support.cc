#include "tests/interface/stream_naming_support.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "tests/library_under_test.h"

namespace kestrel::test {
namespace {

std::vector<StreamType> streamTypesOf(ServiceMapItem item) {
  std::vector<StreamType> types(static_cast<std::size_t>(library().getStreamTypesCount(item)));
  library().getStreamTypes(item, types.data());
  return types;
}

}  // namespace

const plain::PlainCatalogue& plainCatalogue() {
  static const plain::PlainCatalogue catalogue = [] {
    plain::PlainCatalogue made;
    for (StreamType type = 0; type <= kDolbyE; ++type) {
      made.streamTypeNames[type] = kTypeNames[static_cast<std::size_t>(type)];
    }
    for (ServiceMapItem item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
      made.streamTypesOfItem[item] = streamTypesOf(item);
    }
    return made;
  }();
  return catalogue;
}

std::string written(std::size_t size, const std::function<void(char*)>& write) {
  const std::string canary = "\xA5\x5A\xA5\x5A";
  std::string buffer = canary + std::string(size, '#') + canary;
  write(buffer.data() + canary.size());
  EXPECT_TRUE(buffer.starts_with(canary)) << "written in front of the buffer";
  EXPECT_TRUE(buffer.ends_with(canary)) << "written behind the buffer";
  return buffer.substr(canary.size(), size);
}

void expectUnknownId(const std::function<void()>& call) {
  try {
    call();
    ADD_FAILURE() << "raised nothing";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid map<K, T> key");
  }
}

}  // namespace kestrel::test
