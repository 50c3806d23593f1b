#include "apps/letters/finding_list.h"

#include <array>

namespace apps {
namespace {

using wordprocessor::TemplateFinding;

constexpr std::array<Listing::Column, 5> kFindingColumns{{{"grade", "Grade"},
                                                          {"bookmark", "Bookmark"},
                                                          {"place", "Place"},
                                                          {"finding", "Finding"},
                                                          {"suggestion", "Suggestion"}}};

const char* NameOf(TemplateFinding::Grade grade) {
  return grade == TemplateFinding::Grade::kError ? "error" : "warning";
}

}  // namespace

Listing Findings(const std::vector<TemplateFinding>& findings) {
  Listing listing{kFindingColumns, {}};
  for (const auto& finding : findings) {
    listing.rows.push_back(
        {NameOf(finding.grade), finding.bookmark, finding.place, finding.text, finding.suggestion});
  }
  return listing;
}

void TellFindings(const std::vector<TemplateFinding>& findings, std::ostream& out) {
  for (const auto& finding : findings) {
    const auto* both = finding.bookmark.empty() || finding.place.empty() ? "" : ", ";
    out << NameOf(finding.grade) << ": " << finding.bookmark << both << finding.place << ": " << finding.text
        << '\n';
  }
}

}  // namespace apps
