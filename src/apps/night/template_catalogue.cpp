#include "apps/night/template_catalogue.h"

#include "platform/text.h"
#include "reference/reference_database.h"

namespace apps {

TemplateCatalogue::TemplateCatalogue(const host::SettingsFile& settings, const platform::Clock& clock,
                                     platform::Date day)
    : day_(platform::DateText(day)) {
  reference::ReferenceDatabase reference(settings.LocalDatabasePath(), clock);
  const auto region = platform::UpperCase(platform::Trim(settings.Region()));
  const auto rows = reference.Select(
      "SELECT LTR_TYP_ID, DCMT_NM, TMPLT_TS, EFCTV_DT, EXPRTN_DT FROM FLS_LTR_TEMPLATE WHERE REGION='" +
      platform::ReplaceAll(region, "'", "''") + "'");
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    versions_[rows->Text(row, "LTR_TYP_ID")].push_back({.file = rows->Text(row, "DCMT_NM"),
                                                        .time_stamp = rows->Text(row, "TMPLT_TS"),
                                                        .first_day = rows->Text(row, "EFCTV_DT"),
                                                        .last_day = rows->Text(row, "EXPRTN_DT")});
  }
}

std::string TemplateCatalogue::InForce(const std::string& letter_type) const {
  const auto versions = versions_.find(letter_type);
  if (versions == versions_.end()) return "";
  const auto* version = platform::TemplateInForce(versions->second, day_);
  return version == nullptr ? "" : version->file;
}

}  // namespace apps
