#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/settings_file.h"
#include "platform/agreed/template_versions.h"
#include "platform/parties/clock.h"

namespace apps {

/// The templates that letters of one day are made from, read once.
class TemplateCatalogue {
 public:
  /// Throws Failure where the reference database cannot be read.
  TemplateCatalogue(const host::SettingsFile& settings, const platform::Clock& clock, platform::Date day);

  /// The file in force for a letter type; "" where there is none.
  std::string InForce(const std::string& letter_type) const;

 private:
  const std::string day_;
  std::map<std::string, std::vector<platform::TemplateVersion>> versions_;
};

}  // namespace apps
