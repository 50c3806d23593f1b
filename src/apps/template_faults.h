#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace apps {

/// Where templates come from and where they are taken to, each file once: nothing replaces one by its name.
struct TemplateRoad {
  std::filesystem::path from;
  std::filesystem::path to;
  std::string taker;  ///< who fetches a file that is missing there: "the next start"
};

/// A sentence for each of the documents, and the letterhead, that is another file at the one end of the road
/// than at the other: a correction under the old name, which reaches nobody. Files that are missing or cannot
/// be read count as the same.
std::vector<std::string> CorrectionsUnderOldNames(const TemplateRoad& road,
                                                  const std::set<std::string>& documents);

}  // namespace apps
