// kestrel catalogue, kestrel codes
#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "host/catalogue_items.h"
#include "host/command.h"
#include "host/layout_codes.h"
#include "host/output.h"
#include "host/text_table.h"

namespace kestrel::host {
namespace {

ExitCode printCatalogue() {
  std::vector<TableRow> rows = {{"Item", "Tracks", "Name", "Services", "EBU R 123"}};
  for (const CatalogueItem& item : catalogueItems()) {
    rows.push_back({fmt::format("{:>4}", item.item.id), fmt::format("{:>6}", item.tracks),
                    item.item.name, item.services, fmt::format("{}", fmt::join(item.codes, " "))});
  }
  writeResult("", textTable(rows));
  return ExitCode::kConforms;
}

std::string remarkOn(const LayoutCode& code) {
  return code.item == code.found
             ? ""
             : fmt::format("ambiguous: read as item {} where its own does not fit", code.found);
}

ExitCode printCodes() {
  std::vector<TableRow> rows = {{"Code", "Tracks", "Item", "Name", "Remark"}};
  for (const LayoutCode& code : layoutCodes()) {
    const CatalogueItem& item = catalogueItems().at(static_cast<std::size_t>(code.item));
    rows.push_back({code.code, fmt::format("{:>6}", item.tracks), fmt::format("{:>4}", code.item),
                    item.item.name, remarkOn(code)});
  }
  writeResult("", textTable(rows));
  return ExitCode::kConforms;
}

}  // namespace

void addCatalogue(CLI::App& program, CommandRun& run) {
  program.add_subcommand("catalogue", "Lists the layouts of the catalogue, by total of tracks")
      ->footer("Example:\n  kestrel catalogue | grep 'Dolby E'")
      ->callback([&run] { run = printCatalogue; });
}

void addCodes(CLI::App& program, CommandRun& run) {
  program.add_subcommand("codes", "Lists the layout codes of EBU R 123 and what they stand for")
      ->footer("Example:\n  kestrel codes")
      ->callback([&run] { run = printCodes; });
}

}  // namespace kestrel::host
