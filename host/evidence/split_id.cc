#include "host/evidence/split_id.h"

#include <fmt/format.h>

#include "host/basics/text_parts.h"

namespace kestrel::host {
namespace {

using Number = std::int64_t;

// programme: [ "-" number ]
bool takeProgramme(std::string_view& text, std::string& programme) {
  const std::string_view whole = text;
  if (takeText(text, "-") && !takeNumber<Number>(text)) {
    return false;
  }
  programme = whole.substr(0, whole.size() - text.size());
  return true;
}

// channels: number [ " / " number ]
bool takeChannels(std::string_view& text, SplitId& id) {
  const auto channel = takeNumber<Number>(text);
  if (!channel) {
    return false;
  }
  id.channel = *channel;
  if (!takeText(text, " / ")) {
    return true;
  }
  id.partner = takeNumber<Number>(text);
  return id.partner.has_value();
}

// part: number | pair programme | "(" pair ")" programme
bool takePart(std::string_view& text, SplitId& id) {
  const bool isBracketed = takeText(text, "(");
  if (!takeChannels(text, id)) {
    return false;
  }
  if (!id.partner) {
    return !isBracketed;
  }
  return (!isBracketed || takeText(text, ")")) && takeProgramme(text, id.programme);
}

}  // namespace

// id: number "-" part
std::optional<SplitId> parseSplitId(std::string_view id) {
  const auto track = takeNumber<Number>(id);
  if (!track || !takeText(id, "-")) {
    return std::nullopt;
  }
  SplitId result{*track, 0, std::nullopt, {}};
  if (!takePart(id, result) || !id.empty()) {
    return std::nullopt;
  }
  return result;
}

std::string channelId(const SplitId& id, bool besideOtherTracks) {
  const Number base = besideOtherTracks ? id.track * 100 : 0;
  if (!id.partner) {
    return fmt::format("{}", base + id.channel);
  }
  return fmt::format("{} / {}{}", base + id.channel, base + *id.partner, id.programme);
}

}  // namespace kestrel::host
