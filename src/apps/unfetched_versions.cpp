#include "apps/unfetched_versions.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <map>
#include <set>

#include "platform/agreed/template_versions.h"
#include "platform/text.h"
#include "platform/value.h"
#include "reference/sql_dialect.h"

namespace apps {
namespace {

using platform::Quoted;
using platform::TemplateVersion;

/// Of one letter type, the newest one first; those that have ended are not among them. Days compare as texts.
using Versions = std::vector<TemplateVersion>;

std::string DayBeside(const std::string& day, int days) {
  const auto date = platform::ParseDate(day);
  return date ? platform::DateText(platform::Date(std::chrono::sys_days(*date) + std::chrono::days(days)))
              : day;
}

bool HasEnd(const TemplateVersion& version) {
  return !version.last_day.empty();
}

using Catalogue = std::map<std::string, Versions>;  // by letter type

/// The newest of those that a start on that day sees, with an end or without.
const TemplateVersion* Newest(const Versions& versions, bool with_end, const std::string& day) {
  const auto found = std::ranges::find_if(versions, [&](const TemplateVersion& version) {
    return HasEnd(version) == with_end && (!with_end || version.last_day >= day);
  });
  return found == versions.end() ? nullptr : &*found;
}

/// A document may be a version of several letter types.
bool IsFetchedOn(const std::string& day, const std::string& document, const Catalogue& catalogue) {
  return std::ranges::any_of(catalogue, [&](const auto& letter_type) {
    return std::ranges::any_of(std::array{false, true}, [&](bool with_end) {
      const auto* newest = Newest(letter_type.second, with_end, day);
      return newest != nullptr && platform::EqualsIgnoringCase(newest->file, document);
    });
  });
}

/// The first day from `today` on that letters are made with the version and no start fetches it; "" where
/// there is none.
std::string DayWithout(const TemplateVersion& version, const Versions& versions, const Catalogue& catalogue,
                       const std::string& today) {
  std::set<std::string> days = {today};  // on which another one may begin to be used
  for (const auto& other : versions) {
    days.insert(other.first_day);
    if (HasEnd(other)) days.insert(DayBeside(other.last_day, 1));
  }
  for (const auto& day : days) {
    const bool is_used = day >= today && platform::TemplateInForce(versions, day) == &version;
    if (is_used && !IsFetchedOn(day, version.file, catalogue)) return day;
  }
  return "";
}

std::string RemedyFor(const TemplateVersion& version, const TemplateVersion& newer) {
  if (HasEnd(version)) {
    return "Enter " + Quoted(newer.file) + " without an expiration date, or when " + Quoted(version.file) +
           " has ended.";
  }
  return "Give " + Quoted(version.file) + " the expiration date " + DayBeside(newer.first_day, -1) +
         ", the day before " + Quoted(newer.file) + " takes effect.";
}

Catalogue ReadCatalogue(platform::ReferenceDatabase& reference, const std::string& region,
                        std::string& today) {
  const auto rows = reference.Select(
      R"(SELECT LTR_TYP_ID, DCMT_NM, TMPLT_TS, EFCTV_DT, EXPRTN_DT, date() AS TODAY
         FROM FLS_LTR_TEMPLATE WHERE REGION = )" +
      reference::SqlQuoted(region) +
      " AND (EXPRTN_DT IS NULL OR EXPRTN_DT >= date()) ORDER BY LTR_TYP_ID, TMPLT_TS DESC");
  Catalogue catalogue;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    today = rows->Text(row, "TODAY");
    catalogue[rows->Text(row, "LTR_TYP_ID")].push_back(
        {std::string(platform::Trim(rows->Text(row, "DCMT_NM"))), rows->Text(row, "TMPLT_TS"),
         rows->Text(row, "EFCTV_DT"), rows->Text(row, "EXPRTN_DT")});
  }
  return catalogue;
}

}  // namespace

std::vector<std::string> VersionsNobodyFetches(platform::ReferenceDatabase& reference,
                                               const std::string& region) {
  std::string today;
  const auto catalogue = ReadCatalogue(reference, region, today);
  std::vector<std::string> sentences;
  for (const auto& [letter_type, versions] : catalogue) {
    for (const auto& version : versions) {
      const auto day = DayWithout(version, versions, catalogue, today);
      if (day.empty()) continue;
      const auto& newer = *Newest(versions, HasEnd(version), day);
      sentences.push_back("The template " + Quoted(version.file) + " for letter type " + Quoted(letter_type) +
                          " is used on " + day + ", and no machine that lacks it fetches it, because " +
                          Quoted(newer.file) + " is a newer version " +
                          (HasEnd(version) ? "with" : "without") + " an end. " + RemedyFor(version, newer));
    }
  }
  return sentences;
}

}  // namespace apps
