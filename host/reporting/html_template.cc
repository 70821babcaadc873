#include "host/reporting/html_template.h"

#include <fmt/format.h>
#include <fmt/xchar.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <kainjow/mustache.hpp>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

namespace mustache = kainjow::mustache;

// Views are as deep as the templates, so this recursion ends soon.
// NOLINTBEGIN(misc-no-recursion)
mustache::data dataOf(const Json& json);

mustache::data listOf(const Json& array) {
  mustache::data list(mustache::data::type::list);
  for (const Json& element : array) {
    list.push_back(dataOf(element));
  }
  return list;
}

mustache::data objectOf(const Json& members) {
  mustache::data object;
  for (const auto& [name, value] : members.items()) {
    object.set(name, dataOf(value));
  }
  return object;
}

// An empty text is false, as an empty list is: a section of that name is left out.
mustache::data dataOf(const Json& json) {
  if (json.is_object()) {
    return objectOf(json);
  }
  if (json.is_array()) {
    return listOf(json);
  }
  if (json.is_string()) {
    const auto& text = json.get_ref<const std::string&>();
    return text.empty() ? mustache::data(false) : mustache::data(text);
  }
  if (json.is_null() || json.is_boolean()) {
    return {json.is_boolean() && json.get<bool>()};
  }
  return {json.dump()};
}
// NOLINTEND(misc-no-recursion)

struct Replacement {
  wchar_t character;
  std::wstring_view text;
};

constexpr std::array<Replacement, 5> kMarkup = {
    {{L'&', L"&amp;"}, {L'<', L"&lt;"}, {L'>', L"&gt;"}, {L'"', L"&quot;"}, {L'\'', L"&#39;"}}};

void append(std::wstring& html, wchar_t character) {
  const auto unit = static_cast<char32_t>(character);
  const auto* markup = std::ranges::find(kMarkup, character, &Replacement::character);
  if (markup != kMarkup.end()) {
    html += markup->text;
  } else if (isUnseen(unit)) {
    html += fmt::format(L"[U+{:04X}]", static_cast<std::uint32_t>(unit));
  } else {
    html += character;
  }
}

}  // namespace

struct HtmlTemplate::Parsed {
  mustache::mustache engine;
};

HtmlTemplate::HtmlTemplate(std::string_view text)
    : parsed_(std::make_unique<Parsed>(Parsed{mustache::mustache(std::string(text))})) {
  if (!parsed_->engine.is_valid()) {
    throw std::logic_error("a template of the page: " + parsed_->engine.error_message());
  }
  parsed_->engine.set_custom_escape([](const std::string& value) { return htmlText(value); });
}

HtmlTemplate::~HtmlTemplate() = default;

std::string HtmlTemplate::render(const Json& view) const {
  return parsed_->engine.render(dataOf(view));
}

std::string htmlText(std::string_view text) {
  auto wide = wideFromUtf8(text);
  if (!wide) {
    wide = wideFromUtf8(printable(text));
  }
  std::wstring html;
  for (const wchar_t character : *wide) {
    append(html, character);
  }
  return utf8FromWide(html);
}

}  // namespace kestrel::host
