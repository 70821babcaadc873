// A request of the plain C interface with the texts and streams of another input. All of it is
// ASCII.
#pragma once

#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::bench {

class PlainCRequest {
 public:
  explicit PlainCRequest(const plain::ServiceMapInput& input);
  PlainCRequest(const PlainCRequest&) = delete;
  PlainCRequest& operator=(const PlainCRequest&) = delete;

  const KestrelRequest* get() const { return &request_; }

 private:
  std::string description_;
  std::string order_;
  std::vector<std::string> texts_;
  std::vector<KestrelStream> streams_;
  KestrelRequest request_{};
};

}  // namespace kestrel::bench
