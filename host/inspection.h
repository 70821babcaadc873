// The examination of one file: read, mapped and checked.
#pragma once

#include <filesystem>

#include "host/media_reader.h"
#include "host/service_check.h"
#include "host/stream_mapping.h"

namespace kestrel::host {

struct Inspection {
  std::filesystem::path file;
  MappedMedia media;
  ServiceRequest request;
  ServiceCheck check;
};

/// Raises NotExamined when the file cannot be read or has no audio.
Inspection inspectFile(const std::filesystem::path& file, const ServiceRequest& request,
                       MediaReader& reader);

}  // namespace kestrel::host
