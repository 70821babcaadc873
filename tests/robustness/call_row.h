// A row of the table of calls: one call of one function of the interface with a value of one
// argument that is worth trying, and what the call must answer. Two programs walk the table: one
// makes every call in a process of its own, one lets memory run out under it.
//
// An answer is in words: how the call ended ("returned 4", "std::out_of_range") and what it wrote
// ("number 4; needed 2"; nothing when all out-values are as they were).
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace kestrel::test {

/// What surrounds the call of a row, and nothing else of the row.
using Around = std::function<void(const std::function<void()>&)>;

struct Answer {
  std::string end;
  std::string written;

  bool operator==(const Answer&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Answer& answer);

struct CallRow {
  std::string function;
  std::string parameter;  // that the row is about; "" for a function without any
  std::string value;      // what is passed for it
  std::function<Answer(const Around&)> ask;
  Answer expected;
};

using CallRows = std::vector<CallRow>;

/// "getTracksCount(row: -1)".
std::string nameOf(const CallRow& row);

/// All rows.
CallRows callRows();

// The parts of the table.
void addCatalogueRows(CallRows& rows);
void addStreamNamingRows(CallRows& rows);
void addLookUpRows(CallRows& rows);
void addServiceMapRows(CallRows& rows);
void addServiceMapStreamRows(CallRows& rows);
void addEbuR123Rows(CallRows& rows);
void addCCatalogueRows(CallRows& rows);
void addCBufferRows(CallRows& rows);
void addCRequestRows(CallRows& rows);
void addCRequestRecordRows(CallRows& rows);
void addCAnalysisRows(CallRows& rows);

}  // namespace kestrel::test
