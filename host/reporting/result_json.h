// A result as JSON, in the form of docs/schema/kestrel-result-1.json.
#pragma once

#include "host/basics/json.h"
#include "host/judging/result.h"

namespace kestrel::host {

/// The name of the schema, as it stands in every document.
inline constexpr char kResultSchema[] = "kestrel-result-1";

/// All texts in it are UTF-8, so that it can be dumped without errors. A file name that is not
/// UTF-8 stands with U+FFFD in "file" and exactly, as hexadecimal digits, in "fileBytes".
Json toJson(const FileResult& result);

Json toJson(const Expectation& expectation);

/// The bytes of the file's name in such a document.
std::string fileNameIn(const Json& document);

}  // namespace kestrel::host
