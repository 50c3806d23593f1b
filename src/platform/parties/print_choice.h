#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Where and how letters are printed.
struct PrintChoice {
  enum class Sides { kAsPrinterIsSet, kOne, kBoth };

  std::string printer = {};  ///< one of the printers' names
  int copies = 1;
  Sides sides = Sides::kAsPrinterIsSet;
  std::string pages = {};  ///< as PageRanges has them; "" for all

  bool operator==(const PrintChoice&) const = default;
};

/// A printer that letters can go to.
struct OfferedPrinter {
  std::string name;
  bool takes_options = true;  ///< copies, sides and pages; else each letter is taken whole, once

  bool operator==(const OfferedPrinter&) const = default;
};

/// What a user is asked before letters are printed.
struct PrintQuestion {
  std::vector<OfferedPrinter> printers = {};
  PrintChoice proposed = {};
  std::size_t letters = 1;  ///< that will be printed so; pages can be chosen of one
  bool with_dialog = true;  ///< false: the user wants no question, and what was chosen last holds
};

/// The pages that a user has typed ("1 - 3,5") as spoolers take them: "1-3,5", ascending, none twice. ""
/// stays. Nothing where it is no list of pages from 1 to 9999.
std::optional<std::string> PageRanges(std::string_view typed);

}  // namespace platform
