#pragma once

#include <string>
#include <string_view>

#include "platform/value.h"
#include "server/subject/letter_subject.h"
#include "server/wire/field_flags.h"

namespace server {

/// What a source found for a field.
struct FieldValue {
  std::string text;      ///< as the letter writes it
  std::string raw;       ///< as the data hold it
  bool found = true;     ///< false: there is no such form or row at all
  bool is_zero = false;  ///< an amount of nothing
  bool is_null = false;  ///< the data have no value, not even an empty one

  bool IsEmpty() const { return text.empty(); }
};

/// Where fields of a letter come from: each source is a name that letter definitions use.
struct FieldSource {
  std::string_view name;
  FieldValue (*Find)(const LetterSubject& subject);
  FlagWord state = 0;  ///< of the fields that come from it
};
struct PeriodSource {
  std::string_view name;
  FieldValue (*Find)(const TaxPeriod& period);
};

/// "$1,045.50".
FieldValue AmountValue(platform::Money amount);

/// The one source that gives rows: a table field's.
inline constexpr std::string_view kPeriodsSource = "periods";

/// Null where there is no source of that name.
const FieldSource* FindFieldSource(std::string_view name);
/// The sources of the columns of kPeriodsSource.
const PeriodSource* FindPeriodSource(std::string_view name);

/// All of them, for who writes a letter definition: "customer.name, customer.address, ...".
std::string FieldSourceNames();
std::string PeriodSourceNames();

}  // namespace server
