#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/controls/text_field.h"
#include "platform/parties/services.h"

namespace workspace {

/// A Troop/District field: the first character of its text is the troop, the rest the district; both may be
/// empty. One rule for every form that has such a field.
class TroopDistrictField {
 public:
  /// What the field belongs to; all of it outlives the field.
  struct Uses {
    const platform::Services& services;
    platform::TextField& field;
    std::string& troop;
    std::string& district;
    std::string object;  ///< the form's name in reports, "ZEMLO_Corresp"
  };
  explicit TroopDistrictField(Uses uses) : uses_(std::move(uses)) {}

  /// Takes the field's text, without blanks around it, apart.
  void TroopDistrictSplit();
  /// Splits, marks the field, and tells whether there is such a troop or district. An empty field is valid;
  /// where the question fails, the answer is no.
  void TroopDistrictCheck(bool& valid);

  /// From now on, for as long as the result lives, typed small letters become capitals, and every change is
  /// checked and followed by `check`; this outlives the result.
  std::vector<platform::Connection> Connect(std::function<void()> check);

 private:
  bool IsValid();
  std::string Procedure(const char* name) const { return uses_.object + "." + name; }

  const Uses uses_;
};

}  // namespace workspace
