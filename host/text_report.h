// An inspection as text for people.
#pragma once

#include <string>

#include "host/inspection.h"

namespace kestrel::host {

std::string textReport(const Inspection& inspection);

}  // namespace kestrel::host
