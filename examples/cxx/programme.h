// A programme as a table of its audio streams: what a host has after it opened a media file.
#pragma once

#include <kestrel/audio_stream_info.h>

#include <istream>
#include <vector>

// A line for each stream: id, channels, sampling rate, bits, "pcm" or "dolby-e", labels. Lines that
// begin with "#" and empty ones are left out. Throws std::runtime_error, which names a bad line.
std::vector<kestrel::AudioStreamInfo> readProgramme(std::istream& text);
