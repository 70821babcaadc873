#include "tests/robustness/call_row.h"

#include <ostream>

namespace kestrel::test {

std::ostream& operator<<(std::ostream& out, const Answer& answer) {
  return out << answer.end << "; wrote: " << (answer.written.empty() ? "nothing" : answer.written);
}

std::string nameOf(const CallRow& row) {
  if (row.parameter.empty()) return row.function + "()";
  return row.function + "(" + row.parameter + ": " + row.value + ")";
}

CallRows callRows() {
  CallRows rows;
  addCatalogueRows(rows);
  addStreamNamingRows(rows);
  addLookUpRows(rows);
  addServiceMapRows(rows);
  addServiceMapStreamRows(rows);
  addEbuR123Rows(rows);
  addCCatalogueRows(rows);
  addCBufferRows(rows);
  addCRequestRows(rows);
  addCRequestRecordRows(rows);
  addCAnalysisRows(rows);
  return rows;
}

}  // namespace kestrel::test
