// Loads a page in headless Chromium and asks it about its elements.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace kestrel::host {

/// Whether Chromium is installed; without it there is nothing to ask.
bool hasBrowser();

struct BrowserOptions {
  bool isDark = false;
};

/// Loads the page and gives the values of the JavaScript expressions, in their order; an expression
/// that fails gives its error as a text. They are put after the page's own script.
nlohmann::json askPage(const std::string& page, const std::vector<std::string>& expressions,
                       const BrowserOptions& options = {});

/// Makes a PNG of the page.
void takePicture(const std::string& page, const std::filesystem::path& picture,
                 const BrowserOptions& options = {});

}  // namespace kestrel::host
