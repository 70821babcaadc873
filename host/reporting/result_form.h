// The form of a result that comes back from a file: what the pages, the totals and --resume use as
// a number, a text or a list is one, and is not larger than what the program writes.
#pragma once

#include <string>

#include "host/basics/json.h"

namespace kestrel::host {

/// What is wrong with a document, as in "tracks[0].number is no whole number from 1 to 4096"; empty
/// when it has the form of a result. Members that the form does not know are taken.
std::string formErrorIn(const Json& document);

}  // namespace kestrel::host
