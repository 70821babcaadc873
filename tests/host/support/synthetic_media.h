// Made-up files for tests: what a reader would say about them, and their examination.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/evidence/track_map.h"
#include "host/judging/inspect_file.h"
#include "host/judging/library_analysis.h"
#include "host/reading/media_facts.h"

namespace kestrel::host {

/// One stream of one channel for each label, numbered from 1; "-" is no label. A pair of coded
/// programmes (5.1 and stereo) for "E".
RawMedia monoTracks(const std::string& labels);

/// A plain stream of many channels.
RawAudioStream plainStream(const std::string& id, int channels, const std::string& labels = "");

/// A file of such streams.
RawMedia mediaOf(std::vector<RawAudioStream> streams);

TrackMap trackMapOf(const RawMedia& media);

/// Examines a made-up file without reading one.
FileResult inspectMedia(const RawMedia& media, InspectOptions options = {});

/// The ids of the findings of a severity, in their order, separated by blanks.
std::string findingIds(const FileResult& result, Severity severity);

/// The sentence of the first finding with the id; "none" without one.
std::string sentenceOf(const FileResult& result, const std::string& id);

/// The id, then the tracks of each finding: "labels-doubled 2 3".
std::string tracksOfFinding(const FileResult& result, const std::string& id);

}  // namespace kestrel::host
