#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/end_to_end/program.h"

namespace tests {

/// An installed product of a test's own: `zemlo-letters` with tables and templates that it may spoil.
class OwnProduct {
 public:
  OwnProduct() {
    std::filesystem::create_directories(folder_ / "bin");
    std::filesystem::create_directories(folder_ / "share");
    std::filesystem::copy(std::string(ZEMLO_BINARY_DIR) + "/bin/zemlo-letters", folder_ / "bin");
    std::filesystem::copy(std::string(ZEMLO_SOURCE_DIR) + "/data", Data(),
                          std::filesystem::copy_options::recursive);
  }

  std::filesystem::path Data() const { return folder_ / "share/zemlo-correspondence"; }
  std::string Table(const std::string& name) const { return ReadFile(Data() / name); }
  void Write(const std::string& name, const std::string& text) const { WriteFile(Data() / name, text); }

  Outcome Letters(const std::vector<std::string>& words) const {
    auto line = Quoted((folder_ / "bin/zemlo-letters").string());
    for (const auto& word : words) line += " " + Quoted(word);
    return RunShell(line);
  }

 private:
  const TemporaryFolder folder_;
};

}  // namespace tests
