// A layout of the library's catalogue: its name, and the text that asks the analyser for it.
#pragma once

#include <optional>
#include <string>

struct Layout {
  std::string name;         // "5.1 Mix + Stereo Downmix"
  std::string description;  // "T8=5.1 Mix,Stereo"
};

// The layout that a code of EBU R 123 stands for, or nothing.
std::optional<Layout> layoutOfCode(const std::string& code);
