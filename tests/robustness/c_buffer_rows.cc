// Rows for the functions of the plain C interface that fill a buffer from the catalogue.
#include "tests/robustness/c_buffer_rows.h"

#include "tests/robustness/hostile_values.h"

namespace kestrel::test {
namespace {

// A function that fills a buffer for one id. call(id, buffer, capacity, needed)
template <class Element, class Call>
void addBuffer(CallRows& rows, const char* function, const char* id, std::int32_t count,
               const char* buffer, std::int32_t known, std::size_t needed, const std::string& full,
               const Call& call) {
  addCapacities<Element, OutValues>(
      rows, function, buffer, needed, full,
      [=](OutValues&, Element* to, std::size_t capacity, std::size_t* told) {
        return call(known, to, capacity, told);
      });
  rows.push_back(
      row(function, id, std::to_string(known), {returned(KESTREL_OK), wrote(needed, full)},
          [=](OutValues& outs) { return call(known, bufferOf<Element>(outs), 20, &outs.needed); }));
  for (const std::int32_t unknown : unknownIds(count)) {
    for (const std::size_t capacity : {std::size_t{0}, std::size_t{20}, SIZE_MAX}) {
      rows.push_back(row(function, id, std::to_string(unknown), {returned(KESTREL_UNKNOWN_ID), ""},
                         [=](OutValues& outs) {
                           return call(unknown, bufferOf<Element>(outs), capacity, &outs.needed);
                         }));
    }
  }
}

}  // namespace

void addCBufferRows(CallRows& rows) {
  addBuffer<std::int32_t>(rows, "kestrelRowItems", "row", 7, "items", 2, 3, "list 4 5 6",
                          kestrelRowItems);
  addBuffer<std::int32_t>(rows, "kestrelItemStreamTypes", "item", 41, "types", 40, 10,
                          "list 2 0 0 1 0 0 0 0 0 0", kestrelItemStreamTypes);
  addBuffer<char>(rows, "kestrelItemText", "item", 41, "text", 7, 15, "text 5.1 Mix,Stereo|",
                  kestrelItemText);
  addBuffer<char>(rows, "kestrelItemStreamName", "item", 41, "name", 40, 8, "text 5.1 Mix|",
                  [](std::int32_t item, char* name, std::size_t capacity, std::size_t* needed) {
                    return kestrelItemStreamName(item, 0, name, capacity, needed);
                  });
  addBuffer<char>(rows, "kestrelItemStreamName", "position", 10, "name", 9, 7, "text Mono 8|",
                  [](std::int32_t position, char* name, std::size_t capacity, std::size_t* needed) {
                    return kestrelItemStreamName(40, position, name, capacity, needed);
                  });
}

}  // namespace kestrel::test
