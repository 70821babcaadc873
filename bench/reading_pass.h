// What reading an input once takes, in two ways each. The first takes of every character, or
// record, the decision that any reader of it must take, and nothing more; the second does not even
// that.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "api/audio_stream_info.h"

namespace kestrel::bench {

/// Asks of each character of a description whether it begins an entry, belongs to a total or to a
/// list, or separates. Returns the number of entries it may have.
std::int64_t classifyCharacters(const std::string& description);

/// Looks for a character that is not there, as memchr does.
bool findNothing(const std::string& description);

/// Reads each stream's number, digit by digit, its width and its format keys. Returns a sum.
std::int64_t readRecords(const std::vector<AudioStreamInfo>& streams);

/// Reads one field of each stream.
std::int64_t touchRecords(const std::vector<AudioStreamInfo>& streams);

}  // namespace kestrel::bench
