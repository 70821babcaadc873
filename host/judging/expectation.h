// What a file is expected to carry, from each of the ways to say it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "host/judging/result.h"

namespace kestrel::host {

/// A layout description: "T8=5.1 Mix,Stereo;T2=Stereo". Raises UsageError when it has no entry, or
/// an element that names no service.
Expectation expectedLayout(const std::string& text);

/// A file with a layout description; lines that begin with "#" are left out. Raises UsageError,
/// and InputError when it cannot be read to its end.
Expectation expectedLayoutFile(const std::filesystem::path& file);

/// An item of the catalogue, by its id, its name or its services ("Stereo,5.1 Mix"), in any case.
/// Raises UsageError, which names the nearest one.
Expectation expectedItem(const std::string& text);

/// A layout code of EBU R 123 in any spelling. Raises UsageError, which names the nearest one.
Expectation expectedCode(const std::string& text);

/// What a file declares, as far as it can be looked up.
DeclaredLayout declaredLayout(const std::string& text);

/// The expectation of a declaration; nothing when no item stands for it.
std::optional<Expectation> expectedDeclared(const DeclaredLayout& declared);

/// The library reads some codes as others, since it looks for codes inside of texts: "12a" holds
/// "2a". Where the code's own item in the table fits the file's tracks and the library's does not,
/// it is put in the expectation.
/// @return what to tell the user, when the code has two readings
std::optional<Finding> settleAmbiguousCode(Expectation& expectation, std::int32_t trackTotal);

}  // namespace kestrel::host
