#include "host/reporting/html_template.h"

#include <kainjow/mustache.hpp>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "host/reporting/html_text.h"

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

}  // namespace kestrel::host
