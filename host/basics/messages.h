// Messages for the user, which go to the standard error, one line each.
#pragma once

#include <string>

namespace kestrel::host {

void printMessage(const std::string& text);

/// "name": why
void printFileMessage(const std::string& name, const std::string& why);

}  // namespace kestrel::host
