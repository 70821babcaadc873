#include "host/text_report.h"

#include <fmt/format.h>

#include "host/service_tracks.h"
#include "host/text_table.h"
#include "host/utf8.h"

namespace kestrel::host {
namespace {

const char* verdict(Conformance conformance) {
  switch (conformance) {
    case Conformance::kConforms:
      return "the file carries these services";
    case Conformance::kUnequalFormats:
      return "the file does not carry these services: "
             "neighbouring tracks of one service differ in format";
    case Conformance::kOtherServices:
      break;
  }
  return "the file does not carry these services";
}

std::string head(const Inspection& inspection) {
  const MappedMedia& media = inspection.media;
  std::vector<TableRow> rows = {{"File", fmt::format("{} ({})", printable(inspection.file.string()),
                                                     printable(media.container))},
                                {"Audio", fmt::format("{} stream{}", media.streams.size(),
                                                      media.streams.size() == 1 ? "" : "s")},
                                {"Expected", printable(inspection.request.layoutDescription)},
                                {"Result", verdict(inspection.check.conformance)}};
  if (!media.declaredLayout.empty()) {
    rows.insert(rows.begin() + 2, {"Declared", printable(media.declaredLayout)});
  }
  for (const std::string& warning : media.warnings) {
    rows.push_back({"Warning", warning});
  }
  return textTable(rows);
}

std::string serviceTitle(const ServiceMapResult& service, bool reportAll) {
  const bool isExtra = reportAll && service.requested == 0;
  return std::string(serviceName(service)) + (isExtra ? " (not requested)" : "");
}

std::string services(const Inspection& inspection) {
  std::vector<TableRow> rows = {{"Service", "Tracks", "Labels"}};
  for (const ServiceMapResult& service : inspection.check.services) {
    rows.push_back({serviceTitle(service, inspection.request.reportAll),
                    serviceTracks(service, inspection.media),
                    printable(utf8FromWide(service.label))});
  }
  return textTable(rows);
}

std::string streams(const MappedMedia& media) {
  std::vector<TableRow> rows = {{"Stream", "Channels", "Format", "Hz", "Bits", "Labels"}};
  for (std::size_t index = 0; index < media.streams.size(); ++index) {
    const AudioStreamInfo& stream = media.streams[index];
    rows.push_back({printable(media.shown[index].id), std::to_string(stream.channelCount),
                    printable(media.shown[index].format), std::to_string(stream.formatKey1),
                    std::to_string(stream.formatKey2),
                    printable(utf8FromWide(stream.trackLabels))});
  }
  return textTable(rows);
}

}  // namespace

std::string textReport(const Inspection& inspection) {
  const bool conforms = inspection.check.conformance == Conformance::kConforms;
  return head(inspection) + "\n" + (conforms ? services(inspection) : streams(inspection.media));
}

}  // namespace kestrel::host
