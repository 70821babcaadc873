// One evaluation against configurations of EBU R 123 as a text:
//
//   evaluation     = flags "|" item "|" description "\n" {configuration "\n"} {stream "\n"}
//   flags          = "t" allowTwoTrackStreams, or not
//   configuration  = "=" channels "|" item {"|" group}
//   group          = streamType ["," report ["," extra]]
//   stream         as in fuzz/call_text.h
//
// For example, a stereo pair and a Dolby E pair on two mono tracks and one pair-coded track:
//
//   |41|
//   =4|10|1,1|4,1
//   1||1|0
//   2||1|1
//   3-1||6|2||||1
#pragma once

#include <string>
#include <string_view>

#include "tests/plain/plain_ebu_r123.h"

namespace kestrel::fuzz {

struct R123Text {
  plain::R123Input input;
  std::string description;  ///< without any NUL
};

R123Text readR123(std::string_view text);

/// The text that readR123() reads as this evaluation.
std::string writeR123(const R123Text& evaluation);

/// Whether the plain form, which takes a step per channel, may be asked.
bool suitsPlainForm(const plain::R123Input& input);

}  // namespace kestrel::fuzz
