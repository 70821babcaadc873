// The text is read twice: first by one who only counts, then by one who builds.
#include "host/basics/json.h"

#include <fmt/format.h>

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <type_traits>
#include <vector>

#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

template <typename Value>
constexpr std::size_t mostMembers() {
  return std::is_same_v<Value, Json> ? kMostMembers : std::numeric_limits<std::size_t>::max();
}

// Ends the reading where a bound is passed.
// NOLINTBEGIN(readability-identifier-naming): nlohmann::json calls these.
template <typename Value>
class Bounds : public nlohmann::json_sax<Value> {
 public:
  using Sax = nlohmann::json_sax<Value>;

  bool null() override { return true; }
  bool boolean(bool /*value*/) override { return true; }
  bool number_integer(typename Sax::number_integer_t /*value*/) override { return true; }
  bool number_unsigned(typename Sax::number_unsigned_t /*value*/) override { return true; }
  bool number_float(typename Sax::number_float_t /*value*/,
                    const typename Sax::string_t& /*text*/) override {
    return true;
  }
  bool string(typename Sax::string_t& /*value*/) override { return true; }
  bool binary(typename Sax::binary_t& /*value*/) override { return true; }
  bool start_object(std::size_t /*size*/) override { return open(); }
  bool key(typename Sax::string_t& /*name*/) override {
    return ++members_.back() <= mostMembers<Value>();
  }
  bool end_object() override { return close(); }
  bool start_array(std::size_t /*size*/) override { return open(); }
  bool end_array() override { return close(); }
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const typename Value::exception& /*error*/) override {
    return false;
  }

 private:
  bool open() {
    members_.push_back(0);
    return members_.size() <= kDeepestJson;
  }
  bool close() {
    members_.pop_back();
    return true;
  }

  std::vector<std::size_t> members_;  // so far, of each array and object that is open
};
// NOLINTEND(readability-identifier-naming)

// All of those that isUnseen() and JSON lets stand begin with one of these bytes.
constexpr std::string_view kBeginsUnseen = "\x7f\xc2\xd8\xe2\xef";

std::size_t lengthOfCharacter(char first) {
  const auto byte = static_cast<unsigned char>(first);
  return byte < 0x80 ? 1 : byte < 0xE0 ? 2 : 3;
}

// The text is UTF-8, so the character is whole.
void addShown(std::string& shown, std::string_view character) {
  const std::wstring wide = wideFromUtf8(character).value_or(L" ");
  const auto unit = static_cast<char32_t>(wide.front());
  shown += isUnseen(unit) ? fmt::format("\\u{:04x}", static_cast<std::uint32_t>(unit))
                          : std::string(character);
}

}  // namespace

std::string jsonText(const Json& json, int indent) {
  const std::string text = json.dump(indent);
  std::string shown;
  std::size_t done = 0;
  for (std::size_t at = text.find_first_of(kBeginsUnseen); at != std::string::npos;
       at = text.find_first_of(kBeginsUnseen, done)) {
    shown.append(text, done, at - done);
    done = at + lengthOfCharacter(text[at]);
    addShown(shown, std::string_view(text).substr(at, done - at));
  }
  return shown.append(text, done);
}

template <typename Value>
Value parsedJson(std::string_view text) {
  Bounds<Value> bounds;
  return Value::sax_parse(text, &bounds) ? Value::parse(text, nullptr, /*allow_exceptions=*/false)
                                         : Value(Value::value_t::discarded);
}

template Json parsedJson<Json>(std::string_view text);
template ForeignJson parsedJson<ForeignJson>(std::string_view text);

}  // namespace kestrel::host
