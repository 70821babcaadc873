// The distance of Levenshtein, row by row. Texts of users are cut, since only names are compared.
#include "host/basics/nearest_name.h"

#include <algorithm>
#include <numeric>

#include "host/basics/text_parts.h"

namespace kestrel::host {
namespace {

constexpr std::size_t kLongest = 100;
constexpr std::size_t kChange = 2;  // in half letters

std::size_t costOf(char left, char right) {
  if (left == right) {
    return 0;
  }
  return lowerCase(left) == lowerCase(right) ? 1 : kChange;
}

std::size_t distance(std::string_view left, std::string_view right) {
  std::vector<std::size_t> row(right.size() + 1);
  for (std::size_t column = 0; column < row.size(); ++column) {
    row[column] = column * kChange;
  }
  for (const char letter : left) {
    std::size_t diagonal = row.front();
    row.front() += kChange;
    for (std::size_t column = 1; column < row.size(); ++column) {
      const std::size_t replaced = diagonal + costOf(letter, right[column - 1]);
      diagonal = row[column];
      row[column] = std::min({replaced, row[column] + kChange, row[column - 1] + kChange});
    }
  }
  return row.back();
}

// The shortest name that begins with the text, in any case.
std::string completion(std::string_view text, const std::vector<std::string>& names) {
  std::string shortest;
  for (const std::string& name : names) {
    const std::string_view front = std::string_view(name).substr(0, text.size());
    const bool begins = !text.empty() && std::ranges::equal(front, text, {}, lowerCase, lowerCase);
    if (begins && (shortest.empty() || name.size() < shortest.size())) {
      shortest = name;
    }
  }
  return shortest;
}

}  // namespace

std::string nearestName(std::string_view text, const std::vector<std::string>& names) {
  const std::string_view compared = text.substr(0, kLongest);
  std::string nearest = completion(compared, names);
  if (!nearest.empty()) {
    return nearest;
  }
  std::size_t least = 0;
  for (const std::string& name : names) {
    const std::size_t changes = distance(compared, name);
    if (nearest.empty() || changes < least) {
      nearest = name;
      least = changes;
    }
  }
  return nearest;
}

}  // namespace kestrel::host
