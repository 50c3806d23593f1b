#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/parties/template_judge.h"

namespace fakes {

/// Finds the faults that a test gives it, by path and letter type.
class FakeTemplateJudge : public platform::TemplateJudge {
 public:
  std::map<std::pair<std::string, std::string>, std::string> faults;
  std::vector<std::string> asked;  ///< "path for letter type"

  std::string FaultOf(const std::string& path, const std::string& letter_type) override {
    asked.push_back(path + " for " + letter_type);
    const auto fault = faults.find({path, letter_type});
    return fault == faults.end() ? "" : fault->second;
  }
};

}  // namespace fakes
