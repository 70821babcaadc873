// A request of the plain C interface with records of odd sizes and NULLs, as a text:
//
//   request = requestExtra "|" strideExtra "|" streamExtra "|" nulls "|" recordExtra "|" capacity
//             "|" id "\n" call
//   nulls   = any of "d" description, "o" order, "s" streams; of the last stream "i" id, "l" labels
//   call    as in fuzz/call_text.h
//
// The extras are bytes more, or fewer, than the records of this release have: of the request, from
// one stream to the next, of the last stream, and of the records that the host has filled. Capacity
// is that of the host's buffers, id is asked of the catalogue.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "api/kestrel.h"
#include "fuzz/call_text.h"

namespace kestrel::fuzz {

struct OddSizes {
  std::int32_t requestExtra = 0;
  std::int32_t strideExtra = 0;
  std::int32_t streamExtra = 0;
  std::string nulls;
  std::int32_t recordExtra = 0;
  std::size_t capacity = 0;
  std::int32_t id = 0;
};

struct PlainCInput {
  OddSizes odd;
  CallText call;
};

PlainCInput readPlainC(std::string_view text);

std::string writePlainC(const PlainCInput& input);

/// The request, in memory of exactly the size that it speaks of, so that a reader beyond it is
/// caught by the address sanitizer.
class OddRequest {
 public:
  explicit OddRequest(const PlainCInput& input);
  OddRequest(const OddRequest&) = delete;
  OddRequest& operator=(const OddRequest&) = delete;

  const KestrelRequest* record() const {
    return reinterpret_cast<const KestrelRequest*>(request_.data());
  }

  /// Whether something about it is to be refused with that status.
  bool hasBadSize() const { return hasBadSize_; }
  bool hasNull() const { return hasNull_; }
  bool hasBadText() const { return badStream_ >= -1; }
  /// The first byte that is not UTF-8, in the order in which texts are read.
  std::size_t badByte() const { return badByte_; }
  std::int32_t badStream() const { return badStream_; }

 private:
  void addStreams();
  void addRequest();
  KestrelStream recordOf(const StreamText& stream, bool isLast) const;
  const char* unlessNull(char letter, const std::string& text) const;
  void noteText(const char* text, std::int32_t stream);

  const PlainCInput& input_;
  std::uint32_t stride_;
  std::vector<std::uint64_t> streams_;  // of the alignment of their records
  std::vector<std::uint64_t> request_;
  bool hasBadSize_ = false;
  bool hasNull_ = false;
  std::size_t badByte_ = 0;
  std::int32_t badStream_ = -2;  // none
};

}  // namespace kestrel::fuzz
