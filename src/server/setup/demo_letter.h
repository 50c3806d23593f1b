#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/agreed/template_versions.h"
#include "server/context/field_queries.h"
#include "server/context/letter_fields.h"
#include "server/setup/demo_draw.h"
#include "server/setup/demo_schedule.h"
#include "server/storage/database.h"
#include "server/subject/address_verdict.h"
#include "server/subject/letter_subject.h"

namespace server {

/// A letter of the demo history before it is written: whom it is about, when, and from which template.
struct DemoLetter {
  DemoSlot slot;
  LetterSubject subject;
  std::string template_file;
  std::string officer;
  /// What the queries of its fields found, by the fields' names; never null.
  std::shared_ptr<const std::map<std::string, FieldFinding>> findings;
  bool returned = false;  ///< it came back in the mail
  Draw draw{0};           ///< for what is still to be decided about it
};

/// Draws the letters of the demo history, the same for the same data every time: types that had a template on
/// the day, customers that have a form of the kind that the type is about, as things stood on that day.
class DemoLetters {
 public:
  /// `product_data` is the product's data folder. Throws Failure kNotFound or kDamaged naming a file that is
  /// missing or wrong. `database` outlives it.
  DemoLetters(Database& database, const std::filesystem::path& product_data, platform::Date today);

  DemoLetter Draw(int index, const DemoSlot& slot);
  /// Troop, district and name of a county.
  const std::vector<std::string>& CountyColumns(const std::string& county_number) const;

 private:
  struct OwnedForm {
    Form form;
    std::string customer;
  };

  void ReadCatalogue(const std::filesystem::path& reference);
  void ReadOfficers(const std::filesystem::path& reference);
  void FindAccounts();
  const platform::TemplateVersion* FindVersion(const std::string& letter_type, platform::Date day) const;
  const std::vector<OwnedForm>& FormsFor(const std::string& letter_type, server::Draw& draw) const;
  const LetterSubject& SubjectOf(const std::string& customer, const std::optional<Form>& form);
  const std::vector<LetterField>& QueriesOf(const std::string& letter_type);
  void RunQueries(DemoLetter& letter);

  Database& database_;
  const platform::Date today_;
  Office office_;
  std::map<std::string, std::vector<platform::TemplateVersion>> versions_;
  std::map<std::string, std::string> form_types_;  ///< what a letter type is about: one letter each
  std::map<char, std::vector<OwnedForm>> forms_;
  std::vector<std::string> customers_;
  std::vector<std::string> officers_;
  std::map<std::string, std::vector<std::string>> counties_;
  std::map<std::string, std::vector<LetterField>> queries_;  ///< the fields that come from queries, by type
  // Not run again: thousands of letters would each wait for a query that does not end.
  std::map<const LetterField*, FieldFinding> failed_queries_;
  std::unordered_map<std::string, LetterSubject> subjects_;  ///< those that have been looked up
};

}  // namespace server
