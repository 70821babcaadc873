// The look-up of EBU R 123 layout codes in its plain, slow form, for tests to compare the library
// with: every search works on fresh upper-cased copies of both texts.
#pragma once

#include "api/catalogue_ids.h"

namespace kestrel::plain {

/// The item that a layout code stands for; NULL counts as empty.
ServiceMapItem itemOfLayoutCode(const char* code);

}  // namespace kestrel::plain
