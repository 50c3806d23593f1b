#pragma once

#include <map>
#include <string>

#include "platform/parties/view_settings.h"

namespace fakes {

class FakeViewSettings : public platform::ViewSettings {
 public:
  std::map<std::string, std::string, std::less<>> remembered;

  std::string Remembered(std::string_view name) const override {
    const auto found = remembered.find(name);
    return found == remembered.end() ? "" : found->second;
  }
  void Remember(std::string_view name, std::string_view text) override {
    remembered.insert_or_assign(std::string(name), text);
  }
};

}  // namespace fakes
