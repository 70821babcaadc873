// Each platform has two functions here: one that loads a file, one that finds an address by its
// name. The rest is the same everywhere.
#include "tests/library_under_test.h"

#include <bit>
#include <cstdlib>
#include <stdexcept>
#include <utility>
#include <vector>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace kestrel::test {
namespace {

#if defined(_WIN32)

using Handle = HMODULE;

std::wstring libraryPath() {
  if (const wchar_t* path = _wgetenv(L"KESTREL_LIBRARY_PATH")) return path;
  const char text[] = KESTREL_LIBRARY_PATH;
  std::vector<wchar_t> wide(sizeof text);
  MultiByteToWideChar(CP_UTF8, 0, text, sizeof text, wide.data(), static_cast<int>(wide.size()));
  return wide.data();
}

Handle loadLibrary() {
  const Handle handle = LoadLibraryW(libraryPath().c_str());
  if (handle != nullptr) return handle;
  throw std::runtime_error("cannot load the library, error " + std::to_string(GetLastError()));
}

auto addressOf(Handle handle, const char* name) { return GetProcAddress(handle, name); }

#else

using Handle = void*;

std::string libraryPath() {
  const char* path = std::getenv("KESTREL_LIBRARY_PATH");
  return path != nullptr ? path : KESTREL_LIBRARY_PATH;
}

Handle loadLibrary() {
  const Handle handle = dlopen(libraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle != nullptr) return handle;
  throw std::runtime_error(std::string("cannot load the library: ") + dlerror());
}

auto addressOf(Handle handle, const char* name) { return dlsym(handle, name); }

#endif

template <class Function>
void find(Handle handle, const char* name, Function& function) {
  const auto address = addressOf(handle, name);
  if (address == nullptr) throw std::runtime_error(std::string("the library lacks ") + name);
  function = std::bit_cast<Function>(address);
}

Library loadFunctions() {
  const Handle handle = loadLibrary();
  Library functions{};
  find(handle, "getRowCount", functions.getRowCount);
  find(handle, "getTracksCount", functions.getTracksCount);
  find(handle, "getServiceMapItemsCount", functions.getServiceMapItemsCount);
  find(handle, "getServiceMapItems", functions.getServiceMapItems);
  find(handle, "getDefaultServiceMapItem", functions.getDefaultServiceMapItem);
  find(handle, "getServiceMapItemRow", functions.getServiceMapItemRow);
  find(handle, "getServiceMapItemNameLength", functions.getServiceMapItemNameLength);
  find(handle, "getServiceMapItemName", functions.getServiceMapItemName);
  find(handle, "getStreamTypesCount", functions.getStreamTypesCount);
  find(handle, "getStreamTypes", functions.getStreamTypes);
  find(handle, "getStreamTypeNameLength", functions.getStreamTypeNameLength);
  find(handle, "getStreamTypeName", functions.getStreamTypeName);
  find(handle, "getStreamTypeSymbol", functions.getStreamTypeSymbol);
  find(handle, "getStreamTypeSymbolicLength", functions.getStreamTypeSymbolicLength);
  find(handle, "getStreamTypeSymbolic", functions.getStreamTypeSymbolic);
  find(handle, "streamTypeFromStr", functions.streamTypeFromStr);
  find(handle, "serviceMapItemFromStr", functions.serviceMapItemFromStr);
  find(handle, "getServiceMap", functions.getServiceMap);
  find(handle, "getServiceMapEbuR123", functions.getServiceMapEbuR123);
  find(handle, "GetServiceMapItemByAS11R123", functions.GetServiceMapItemByAS11R123);
  return functions;
}

// A record that no call makes, since no service has this track count.
ServiceMapResult sentinel() {
  ServiceMapResult record;
  record.trackCount = -77;
  record.label = L"a label that was here before the call and takes storage";
  return record;
}

bool isUntouched(const std::vector<ServiceMapResult>& results) {
  return results.size() == 1 && results[0].trackCount == sentinel().trackCount &&
         results[0].label == sentinel().label;
}

plain::Outcome outcomeOf(std::int32_t returned, const std::vector<ServiceMapResult>& results) {
  if (returned == 1 && !isUntouched(results)) return plain::Outcome::kFilled;
  if (returned == 0 && isUntouched(results)) return plain::Outcome::kUntouched;
  if (returned == 0 && results.empty()) return plain::Outcome::kEmptied;
  throw std::runtime_error("getServiceMap returned " + std::to_string(returned) + " and left " +
                           std::to_string(results.size()) + " records");
}

}  // namespace

const Library& library() {
  static const Library functions = loadFunctions();
  return functions;
}

plain::PlainResult callServiceMap(const plain::ServiceMapInput& input) {
  std::vector<ServiceMapResult> results{sentinel()};
  const std::int32_t returned =
      library().getServiceMap(input.description.c_str(), input.order.c_str(), 0,
                              input.streams.data(), static_cast<std::int32_t>(input.streams.size()),
                              &results, input.reportAll ? 1 : 0, input.surroundCheck ? 1 : 0);
  const plain::Outcome outcome = outcomeOf(returned, results);
  if (outcome == plain::Outcome::kUntouched) results.clear();
  return {outcome, std::move(results)};
}

}  // namespace kestrel::test
