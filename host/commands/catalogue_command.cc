// kestrel catalogue, kestrel codes
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/basics/json.h"
#include "host/basics/output.h"
#include "host/basics/text_columns.h"
#include "host/commands/command_line.h"
#include "host/judging/catalogue_items.h"
#include "host/judging/layout_codes.h"
#include "host/reporting/catalogue_json.h"

namespace kestrel::host {
namespace {

std::string catalogueTable() {
  std::vector<TableRow> rows = {{"Item", "Tracks", "Name", "Services", "EBU R 123"}};
  for (const CatalogueItem& item : catalogueItems()) {
    rows.push_back({fmt::format("{:>4}", item.item.id), fmt::format("{:>6}", item.tracks),
                    item.item.name, item.services, fmt::format("{}", fmt::join(item.codes, " "))});
  }
  return textTable(rows);
}

std::string remarkOn(const LayoutCode& code) {
  return code.item == code.found
             ? ""
             : fmt::format("ambiguous: read as item {} where its own does not fit", code.found);
}

std::string codesTable() {
  std::vector<TableRow> rows = {{"Code", "Tracks", "Item", "Name", "Remark"}};
  for (const LayoutCode& code : layoutCodes()) {
    const CatalogueItem& item = catalogueItems().at(static_cast<std::size_t>(code.item));
    rows.push_back({code.code, fmt::format("{:>6}", item.tracks), fmt::format("{:>4}", code.item),
                    item.item.name, remarkOn(code)});
  }
  return textTable(rows);
}

// A command that prints a table in one of two forms.
struct TableCommand {
  const char* name;
  const char* help;
  const char* examples;
  std::string (*text)();
  Json (*json)();
};

constexpr TableCommand kCatalogue = {
    "catalogue", "Lists the layouts of the catalogue, by total of tracks",
    "Examples:\n"
    "  kestrel catalogue | grep 'Dolby E'\n"
    "  kestrel catalogue --format json | jq '.[] | select(.trackTotal == 8).name'",
    catalogueTable, catalogueJson};
constexpr TableCommand kCodes = {"codes",
                                 "Lists the layout codes of EBU R 123 and what they stand for",
                                 "Examples:\n"
                                 "  kestrel codes\n"
                                 "  kestrel codes --format json | jq -r '.[].code'",
                                 codesTable, codesJson};

void addTable(CLI::App& program, CommandRun& run, const TableCommand& table) {
  CLI::App* command = program.add_subcommand(table.name, table.help);
  const auto format = std::make_shared<std::string>("text");
  command->add_option("--format", *format, "text or json")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
  command->footer(table.examples);
  command->callback([format, &run, &table] {
    run = [format, &table] {
      writeResult("", *format == "json" ? jsonText(table.json(), 2) + "\n" : table.text());
      return ExitCode::kConforms;
    };
  });
}

}  // namespace

void addCatalogue(CLI::App& program, CommandRun& run) { addTable(program, run, kCatalogue); }

void addCodes(CLI::App& program, CommandRun& run) { addTable(program, run, kCodes); }

}  // namespace kestrel::host
