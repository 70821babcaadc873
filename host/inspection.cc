#include "host/inspection.h"

#include <utility>

#include "host/input_file.h"
#include "host/not_examined.h"

namespace kestrel::host {

Inspection inspectFile(const std::filesystem::path& file, const ServiceRequest& request,
                       MediaReader& reader) {
  checkInputFile(file);
  const ReadMedia read = reader.read(file);
  MappedMedia media = mapMedia(read.raw);
  media.warnings.insert(media.warnings.begin(), read.warnings.begin(), read.warnings.end());
  if (media.streams.empty()) {
    throw NotExamined("no audio stream in it");
  }
  ServiceCheck check = checkServices(media.streams, request);
  return {file, std::move(media), request, std::move(check)};
}

}  // namespace kestrel::host
