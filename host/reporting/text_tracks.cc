#include "host/reporting/text_tracks.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/basics/text_columns.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

struct Cell {
  std::string text;
  Colour colour = Colour::kPlain;
};

/// A column beside the tracks: its head, then a cell for each track.
struct ServiceColumn {
  std::string head;
  std::vector<Cell> cells;
};

std::string channelCounts(const FileResult& result, const AudioTrack& track) {
  std::string counts;
  for (const std::size_t index : track.streams) {
    counts +=
        fmt::format("{}{}", counts.empty() ? "" : "+", result.facts.map.streams[index].channels);
  }
  return counts;
}

std::string formatInWords(const FileResult& result, const AudioTrack& track) {
  const AudioStream& stream = result.facts.map.streams[track.streams.front()];
  std::string words = printable(stream.format);
  if (track.isPairCoded) {
    words += fmt::format(" ({} channels)", channelCounts(result, track));
  }
  if (stream.sampleRate > 0) {
    words += fmt::format(" {} Hz", stream.sampleRate);
  }
  if (stream.bitDepth > 0) {
    words += fmt::format(" {} bits", stream.bitDepth);
  }
  return words;
}

// The line of a track in a service: a corner with the name at the first, then a bar.
std::string bracket(std::size_t position, std::size_t count, const std::string& name) {
  if (position == 0) {
    return (count == 1 ? "─ " : "┌ ") + name;
  }
  return position + 1 == count ? "└" : "│";
}

void place(ServiceColumn& column, const TrackNumbers& tracks, const std::string& name,
           Colour colour) {
  for (std::size_t position = 0; position < tracks.size(); ++position) {
    const auto at = static_cast<std::size_t>(tracks[position] - 1);
    if (at < column.cells.size()) {
      column.cells[at] = {bracket(position, tracks.size(), name), colour};
    }
  }
}

ServiceColumn expectedColumn(const FileResult& result) {
  ServiceColumn column{"Expected", std::vector<Cell>(result.facts.map.tracks.size())};
  for (std::size_t index = 0; index < result.judgement.services.size(); ++index) {
    const ResultService& service = result.judgement.services[index];
    const std::string name =
        printable(service.name) + (service.isRequested ? "" : " (not requested)");
    place(column, service.tracks, service.isHeld ? name : name + " ✗",
          service.isHeld ? serviceColour(index) : Colour::kBad);
  }
  return column;
}

ServiceColumn candidateColumn(const FileResult& result) {
  ServiceColumn column{"Looks like", std::vector<Cell>(result.facts.map.tracks.size())};
  const std::vector<PlacedService>& services = result.judgement.identification.front().services;
  for (std::size_t index = 0; index < services.size(); ++index) {
    place(column, services[index].tracks, services[index].name, serviceColour(index));
  }
  return column;
}

std::vector<ServiceColumn> serviceColumns(const FileResult& result) {
  std::vector<ServiceColumn> columns;
  if (!result.judgement.services.empty()) {
    columns.push_back(expectedColumn(result));
  }
  const bool conforms = result.verdict.result == VerdictResult::kConforms;
  if (!result.judgement.identification.empty() && !conforms) {
    columns.push_back(candidateColumn(result));
  }
  return columns;
}

std::vector<std::string> trackLines(const FileResult& result) {
  std::vector<TableRow> rows = {{"Track", "Stream", "Label", "Format"}};
  for (const AudioTrack& track : result.facts.map.tracks) {
    rows.push_back({fmt::format("{:>5}", track.number), printable(track.name),
                    printable(track.label), formatInWords(result, track)});
  }
  return textTableLines(rows);
}

std::size_t widthOf(const ServiceColumn& column) {
  std::size_t width = columnsOf(column.head);
  for (const Cell& cell : column.cells) {
    width = std::max(width, columnsOf(cell.text));
  }
  return width + 2;
}

std::string padded(const std::string& text, std::size_t width) {
  return text + std::string(width - std::min(width, columnsOf(text)), ' ');
}

}  // namespace

std::string textTracks(const FileResult& result, const TextStyle& style) {
  const std::vector<std::string> tracks = trackLines(result);
  const std::vector<ServiceColumn> columns = serviceColumns(result);
  std::string text;
  for (std::size_t line = 0; line < tracks.size(); ++line) {
    StyledLine styled;
    styled.add(tracks[line], line == 0 ? Colour::kFaint : Colour::kPlain);
    for (const ServiceColumn& column : columns) {
      const Cell cell = line == 0 ? Cell{column.head, Colour::kFaint} : column.cells[line - 1];
      styled.add(padded(cell.text, widthOf(column)), cell.colour);
    }
    text += styled.text(style);
  }
  return text;
}

}  // namespace kestrel::host
