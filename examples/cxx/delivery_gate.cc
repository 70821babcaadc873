// Lets a programme pass whose tracks carry one of the layouts that a broadcaster accepts.
//
// usage: delivery_gate PROGRAMME CODE...      PROGRAMME: see programme.h; CODE: of EBU R 123, "8b"
//
// The exit code is 0 when at least one of the layouts is carried, 1 when none is, and 2 when the
// programme or a code cannot be used.
#include <kestrel/service_map.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "layout.h"
#include "programme.h"

namespace {

enum class Answer { carried, otherTracks, formatsDiffer };

struct Check {
  Answer answer;
  std::vector<kestrel::ServiceMapResult> services;  // only where the layout is carried
};

// A call that returns 0 leaves the records alone when the tracks are others than the services need,
// and takes them away when neighbouring tracks differ. One record put in before tells them apart.
Check check(const Layout& layout, const std::vector<kestrel::AudioStreamInfo>& streams) {
  std::vector<kestrel::ServiceMapResult> services(1);
  const auto carried =
      kestrel::getServiceMap(layout.description.c_str(), L"", 0, streams.data(),
                             static_cast<std::int32_t>(streams.size()), &services, 0, 1);
  if (carried != 0) return {Answer::carried, services};
  return {services.empty() ? Answer::formatsDiffer : Answer::otherTracks, {}};
}

void printService(const kestrel::ServiceMapResult& service) {
  std::cout << "      ";
  for (std::int32_t slot = 0; slot < service.trackCount; ++slot) {
    const kestrel::TrackSlot& track = service.slots[static_cast<std::size_t>(slot)];
    std::cout << (slot == 0 ? "" : " ") << track.trackNumber << '.' << track.indexInGroup + 1;
  }
  if (service.isEmca != 0) std::cout << "  coded";
  // The call was given no order of labels, so a label tells that the tracks have a full set.
  if (!service.label.empty()) {
    std::cout << "  5.1 as " << std::string(service.label.begin(), service.label.end());
  }
  std::cout << '\n';
}

void print(const std::string& code, const Layout& layout, const Check& result) {
  static const char* const words[] = {"carried", "other tracks", "formats differ within a service"};
  std::cout << code << "  " << layout.name << ": " << words[static_cast<int>(result.answer)]
            << '\n';
  for (const auto& service : result.services) printService(service);
}

bool passes(const char* file, const std::vector<std::string>& codes) {
  std::ifstream text(file);
  if (!text) throw std::runtime_error(std::string("cannot read ") + file);
  const auto streams = readProgramme(text);
  bool carried = false;
  for (const std::string& code : codes) {
    const auto layout = layoutOfCode(code);
    if (!layout) throw std::runtime_error("no layout is known for the code " + code);
    const Check result = check(*layout, streams);
    print(code, *layout, result);
    carried = carried || result.answer == Answer::carried;
  }
  return carried;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::cerr << "usage: delivery_gate PROGRAMME CODE...\n";
    return 2;
  }
  try {
    return passes(arguments[1], {arguments + 2, arguments + count}) ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "delivery_gate: " << error.what() << '\n';
    return 2;
  }
}
