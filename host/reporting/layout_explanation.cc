#include "host/reporting/layout_explanation.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/basics/text_columns.h"
#include "host/basics/utf8.h"
#include "host/evidence/track_map.h"
#include "host/judging/catalogue_items.h"
#include "host/judging/layout_description.h"

namespace kestrel::host {
namespace {

// Goes through the text from its front and writes what each stretch of it is.
class Explainer {
 public:
  explicit Explainer(const std::string& description) : description_(description) {}

  LayoutExplanation run() {
    const std::vector<LayoutEntry> entries = layoutEntries(description_);
    std::size_t at = 0;
    for (const LayoutEntry& entry : entries) {
      passOver(at, entry.offset);
      explain(entry);
      at = entry.offset + entry.length;
    }
    passOver(at, description_.size());
    if (entries.empty()) {
      complain(0, description_.size(), "There is no entry such as \"T8=5.1 Mix,Stereo\".");
    }
    return std::move(result_);
  }

 private:
  void write(const std::string& line) { result_.text += visible(line) + "\n"; }

  // The sentence, then the text with carets under a stretch of it.
  void complain(std::size_t offset, std::size_t length, const std::string& sentence) {
    result_.isSound = false;
    write("  " + sentence);
    write("    " + visible(description_));
    const std::size_t before = columnsOf(visible(description_.substr(0, offset)));
    const std::size_t under = columnsOf(visible(description_.substr(offset, length)));
    write("    " + std::string(before, ' ') + std::string(std::max<std::size_t>(under, 1), '^'));
  }

  void passOver(std::size_t from, std::size_t to) {
    const std::string between = description_.substr(from, to - from);
    if (between.find_first_not_of("; \t\r\n") != std::string::npos && between != description_) {
      complain(from, to - from, "This belongs to no entry and is passed over.");
    }
  }

  void explain(const LayoutEntry& entry) {
    write(fmt::format("For {} tracks:", entry.total));
    explainElements(entry);
    const bool isFirst = std::ranges::find(totals_, entry.total) == totals_.end();
    totals_.push_back(entry.total);
    if (!isFirst) {
      complain(entry.offset, entry.length,
               "It is never used: an earlier entry is for as many tracks.");
    }
    const std::int32_t taken = tracksOf(entry);
    if (taken != entry.total) {
      complain(entry.offset, entry.length,
               fmt::format("Its services take {} of {} tracks.", taken, entry.total));
    }
    nameItem(entry);
  }

  void explainElements(const LayoutEntry& entry) {
    std::int32_t next = 1;
    for (const LayoutElement& element : entry.elements) {
      if (element.tracks == 0) {
        complainOfName(element);
        continue;
      }
      const std::string tracks = tracksInWords(trackRange(next, element.tracks));
      write(fmt::format("  {:<16}  {}{}", tracks, element.name,
                        element.isHidden ? ", not reported" : ""));
      next += element.tracks;
    }
  }

  void complainOfName(const LayoutElement& element) {
    const std::string nearest = nearestService(element.name);
    complain(element.offset, element.length,
             element.length == 0
                 ? "There is nothing between two commas."
                 : fmt::format(R"("{}" is no service and takes no tracks; the nearest is "{}".)",
                               printable(element.name), nearest));
  }

  void nameItem(const LayoutEntry& entry) {
    std::string services;
    for (const LayoutElement& element : entry.elements) {
      services += (services.empty() ? "" : ",") + element.name;
    }
    const std::string description = fmt::format("T{}={}", entry.total, services);
    const auto& items = catalogueItems();
    const auto item = std::ranges::find(items, description, &CatalogueItem::description);
    if (item != items.end()) {
      write(fmt::format("  This is item {} of the catalogue, \"{}\".", item->item.id,
                        item->item.name));
    }
  }

  const std::string& description_;
  LayoutExplanation result_{"", true};
  std::vector<std::int32_t> totals_;
};

}  // namespace

LayoutExplanation explainLayout(const std::string& description) {
  return Explainer(description).run();
}

}  // namespace kestrel::host
