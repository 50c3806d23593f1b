#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/parties/file_system.h"

namespace fakes {

/// Files in memory: names to the letter, any separator.
class FakeFiles : public platform::FileSystem {
 public:
  std::map<std::string, std::string> content;
  std::vector<std::pair<std::string, std::string>> copies;  ///< from, to
  std::vector<std::string> deleted;
  /// Touching one of these fails with this kind.
  std::map<std::string, platform::Failure::Kind> broken;

  bool Exists(const std::string& path) const override {
    FailWhereBroken(path);
    return content.contains(path);
  }
  void CopyFile(const std::string& from, const std::string& to) override {
    copies.emplace_back(from, to);
    FailWhereBroken(from);
    FailWhereBroken(to);
    const auto source = content.find(from);
    if (source == content.end()) {
      throw platform::Failure(platform::Failure::Kind::kNotFound, "There is no file \"" + from + "\".");
    }
    content[to] = source->second;
  }
  bool DeleteFile(const std::string& path) override {
    deleted.push_back(path);
    FailWhereBroken(path);
    return content.erase(path) > 0;
  }

 private:
  void FailWhereBroken(const std::string& path) const {
    if (const auto kind = broken.find(path); kind != broken.end()) {
      throw platform::Failure(kind->second, "The file \"" + path + "\" cannot be used.");
    }
  }
};

}  // namespace fakes
