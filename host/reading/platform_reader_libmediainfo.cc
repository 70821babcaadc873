#include "host/reading/libmediainfo_reader.h"
#include "host/reading/platform_reader.h"

namespace kestrel::host {

std::shared_ptr<const MediaReader> platformReader(std::chrono::milliseconds timeLimit) {
  // The program itself, whatever name it was started by.
  constexpr char kOwnProgram[] = "/proc/self/exe";
  return std::make_shared<LibmediainfoReader>(kOwnProgram, timeLimit);
}

}  // namespace kestrel::host
