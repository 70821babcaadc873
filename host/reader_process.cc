#include "host/reader_process.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "host/libmediainfo_fields.h"
#include "host/raw_media_json.h"

namespace kestrel::host {
namespace {

constexpr char kCommand[] = "--as-reader-process";
constexpr std::size_t kArgumentCount = 4;  // the command, the parent's id, the speed, the file

// The kernel kills this process when its parent ends; a parent that ended before the request is
// told by the id.
void endWithParent(const std::string& parentId) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (std::to_string(::getppid()) != parentId) {
    ::_exit(EXIT_FAILURE);
  }
}

int writeFields(const std::filesystem::path& file, const std::string& parseSpeed) {
  const auto media = readFieldsWithLibmediainfo(file, parseSpeed);
  if (!media) {
    return kReaderCannotOpen;
  }
  const bool isWritten = std::fputs(rawMediaToJson(*media).c_str(), stdout) >= 0;
  return isWritten && std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

std::vector<std::string> readerArguments(const std::filesystem::path& file,
                                         const std::string& parseSpeed) {
  return {kCommand, std::to_string(::getpid()), parseSpeed, file.string()};
}

bool isReaderCommand(const std::vector<std::string>& arguments) {
  return arguments.size() == kArgumentCount && arguments.front() == kCommand;
}

void runReaderProcess(const std::vector<std::string>& arguments) {
  endWithParent(arguments[1]);
  int code = EXIT_FAILURE;
  try {
    code = writeFields(arguments[3], arguments[2]);
  } catch (const std::exception&) {
    // The parent sees the exit code; there is nobody else to tell.
  }
  ::_exit(code);
}

}  // namespace kestrel::host
