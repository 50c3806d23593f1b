#include "apps/letters/chosen_letters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <set>
#include <utility>

#include "apps/letters/listing.h"
#include "apps/letters/page_user.h"
#include "apps/letters/search_criteria.h"
#include "apps/letters/standard_streams.h"
#include "platform/agreed/requests.h"

namespace apps {
namespace {

using workspace::PageIndex;

constexpr auto kCriteria = std::to_array<const char*>(
    {"type", "customer", "form-type", "form", "status", "from", "to", "batch", "troop-district"});

std::optional<std::int64_t> LetterNumber(const std::string& text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = error == std::errc() && end == text.data() + text.size() && number > 0;
  return is_number ? std::optional(number) : std::nullopt;
}

/// Each once, in the order given.
std::vector<std::int64_t> LetterNumbers(const CommandLine& line) {
  std::vector<std::int64_t> numbers;
  std::set<std::int64_t> known;
  for (const auto& text : line.Values("letter"))
    if (const auto number = LetterNumber(text); known.insert(*number).second) numbers.push_back(*number);
  return numbers;
}

platform::Grid& Letters(HeadlessOffice& office) {
  return office.workspace().pages().tracking.sdgGrid;
}

std::size_t CountOf(platform::Grid& letters) {
  return letters.rows() ? letters.rows()->RecordCount() : 0;
}

}  // namespace

void AddLetterChoice(CommandLine& line) {
  line.Option("letter", "N",
              "The letter of that number (\"history\" lists them); may be given several times.",
              Takes::kManyValues)
      .Option("from-search", "", "All letters that the following criteria find.");
  AddCriteria(line);
  line.Option("dry-run", "", "Lists what would be done, and does nothing.");
}

std::optional<std::string> LetterChoiceFault(const CommandLine& line) {
  if (line.IsSet("letter") == line.IsSet("from-search"))
    return "Say which letters: --letter N, once for each, or --from-search with criteria.";
  for (const auto& text : line.Values("letter"))
    if (!LetterNumber(text)) return "--letter takes the number of a letter, not \"" + text + "\".";
  if (line.Values("letter").size() > platform::request_key::kMostLettersNamed) {
    return "--letter can be given " + std::to_string(platform::request_key::kMostLettersNamed) +
           " times at most; use --from-search.";
  }
  for (const auto* criterion : kCriteria) {
    if (!line.IsSet(criterion)) continue;
    if (line.IsSet("letter")) return "--" + std::string(criterion) + " goes with --from-search only.";
  }
  return CriterionFault(line);
}

void ListLetters(HeadlessOffice& office, const std::vector<std::int64_t>& numbers) {
  office.workspace().pages().tabs.Select(PageIndex::kTracking);
  office.workspace().ListLetters(numbers);
  office.RunUntilIdle();
  if (office.refused()) return;
  auto& letters = Letters(office);
  for (const auto number : numbers) {
    const bool is_listed =
        letters.rows() &&
        letters.rows()->Find("SEQ_NBR", platform::RecordSet::Match::kEquals, std::to_string(number));
    if (!is_listed)
      Refuse("There is no letter " + std::to_string(number) + " in the letter history. Nothing was done.");
  }
}

void SelectRows(HeadlessOffice& office, std::vector<std::size_t> rows) {
  Letters(office).UserSelects(std::move(rows));
  office.RunUntilIdle();
}

void SelectAllRows(HeadlessOffice& office) {
  std::vector<std::size_t> rows(CountOf(Letters(office)));
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  SelectRows(office, std::move(rows));
}

std::size_t ChooseLetters(HeadlessOffice& office, const CommandLine& line) {
  if (line.IsSet("letter"))
    ListLetters(office, LetterNumbers(line));
  else
    SearchLetters(office, line);
  if (office.refused()) return 0;
  const auto letters = CountOf(Letters(office));
  if (letters == 0)
    Notices() << "No letter history record found\n";
  else
    SelectAllRows(office);
  return letters;
}

void TellWhatWouldBeDone(HeadlessOffice& office, std::size_t option, const CommandLine& line) {
  static constexpr std::array<Listing::Column, 6> kColumns{{{"letter", "Letter"},
                                                            {"customer", "Customer"},
                                                            {"type", "Type"},
                                                            {"status", "Status"},
                                                            {"done", "Would be done"},
                                                            {"reason", "Why not"}}};
  auto& page = office.workspace().pages().tracking;
  auto& letters = page.sdgGrid;
  Listing listing{kColumns, {}};
  for (std::size_t row = 0; row < CountOf(letters); ++row) {
    letters.EnsureRowLoaded(row);
    SelectRows(office, {row});
    const auto& action = page.OptLetter[option];
    const auto text = [&](const char* column) { return letters.rows()->Text(row, column); };
    const bool enabled = action.enabled();
    listing.rows.push_back({text("SEQ_NBR"), text("CUST_ID"), text("LTR_TYP_ID"), text("PRNT_STTS_DESC"),
                            enabled ? "yes" : "no",
                            enabled || !action.why_disabled ? "" : action.why_disabled()});
  }
  Print(listing, line.IsSet("json"));
}

void ActOnLetters(HeadlessOffice& office, std::size_t option) {
  auto& action = office.workspace().pages().tracking.OptLetter[option];
  RequireEnabled(action);
  action.UserClicks();
  office.RunUntilIdle();
}

}  // namespace apps
