#include "host/office_mark.h"

#include <fstream>
#include <string>

#include "platform/file_access.h"
#include "platform/whole_file.h"

namespace host {
namespace {

constexpr auto kExplanation =
    "# Left by \"zemlo-letters init\", to say what this folder is. Leave it here.\n";
constexpr auto kDemoWord = "demo";
constexpr auto kOwnWord = "office";
constexpr auto kUnfinished = ", unfinished";

}  // namespace

std::optional<OfficeMark> ReadOfficeMark(const DataFolder& folder) {
  if (!platform::IsThere(folder.Mark())) return std::nullopt;
  std::ifstream file(folder.Mark());
  std::string line;
  while (std::getline(file, line) && line.starts_with('#')) {
  }
  return OfficeMark{.kind = line.starts_with(kDemoWord) ? OfficeKind::kDemo : OfficeKind::kOwn,
                    .is_whole = !line.ends_with(kUnfinished)};
}

void LeaveOfficeMark(const DataFolder& folder, const OfficeMark& mark) {
  platform::WriteWholeFile(folder.Mark(), std::string(kExplanation) +
                                              (mark.kind == OfficeKind::kDemo ? kDemoWord : kOwnWord) +
                                              (mark.is_whole ? "" : kUnfinished) + "\n");
}

}  // namespace host
