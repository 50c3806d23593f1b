#pragma once

#include <string>

#include "platform/parties/services.h"

namespace tracking {

/// For each letter action the print status codes it is allowed for, one letter each, written one after
/// another. An empty list allows the action for every status.
struct LetterActionLists {
  std::string ActionViewLtr = {};
  std::string ActionPrintLocal = {};
  std::string ActionViewBK = {};
  std::string ActionURM = {};  ///< return mail
  std::string ActionPrintBatch = {};
  std::string ActionResubmit = {};
  std::string ActionSAV = {};
  std::string ActionMCU = {};  ///< maintain the customer

  static bool Allows(const std::string& list, const std::string& print_status) {
    return list.empty() || list.find(print_status) != std::string::npos;
  }
};

/// Reads the lists from code table "LTRACTION". An action that the table has no list for is allowed for every
/// status. A failure is reported and leaves the lists not yet read as they were.
void GetLetterAction(const platform::Services& services, LetterActionLists& lists);

}  // namespace tracking
