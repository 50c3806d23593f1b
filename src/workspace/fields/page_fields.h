#pragma once

#include <vector>

#include "workspace/fields/batch_criteria.h"
#include "workspace/fields/form_number_field.h"
#include "workspace/fields/search_fields.h"
#include "workspace/fields/troop_district_field.h"

namespace workspace {

/// The fields of the pages that do more than hold a value.
class PageFields {
 public:
  /// All outlive this.
  PageFields(const platform::Services& services, Pages& pages, SearchFields& search, FieldCheck& field_check);

  BatchCriteria batch_criteria;
  TroopDistrictField troop_district;  ///< of the tracking page

  /// Acts on the fields from now on, for as long as the result lives; this outlives it.
  std::vector<platform::Connection> Connect();

 private:
  void ConnectBatch(std::vector<platform::Connection>& connections);

  const platform::Services& services_;
  Pages& pages_;
  FieldCheck& field_check_;
  FormNumberField generate_form_number_;
  FormNumberField search_form_number_;
};

}  // namespace workspace
