#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/wire/exchange.h"

namespace server {

/// A letter that waits for the coming batch run, or is being worked on by one. A letter has one at most.
/// Decision [batch-items].
struct BatchItem {
  std::string action;                    ///< one of batch_action
  std::optional<std::int64_t> run = {};  ///< the run that has claimed it; nothing while it waits
};

/// Nothing where the letter waits for no run.
std::optional<BatchItem> FindBatchItem(Database& database, std::int64_t letter);

/// Has the coming run act on a letter: kReprint as it is stored, kBatchAgain made again, which then waits
/// (print status "W"). An item that waits already is replaced; one that a run has claimed must not be there.
void GiveToBatchRun(Exchange& exchange, std::int64_t letter, std::string_view action);

/// What is asked of one letter.
struct AskedItem {
  std::int64_t letter;
  std::string action;  ///< one of batch_action
};
/// Gives each letter to the coming run or takes it back, and says in the record CORR_BITEM_OUTCOME what came
/// of it. A letter that is gone, claimed by a run, or of a print status that does not allow the action stays
/// as it is.
void GiveLetters(Exchange& exchange, const std::vector<AskedItem>& asked);

/// Answers the record "CORR_BITEM": GiveLetters for its rows; kCancel takes a letter back. Throws Failure
/// kRefused for a record without rows, an unknown action, a SEQ_NBR that is no number; nothing is taken then.
void AnswerBatchItems(Exchange& exchange);

/// What waits or is claimed, by letter, in the columns of the record CORR_BITEM_WAITING.
std::shared_ptr<platform::RecordSet> SelectWaitingItems(Database& database);

/// Answers the key BATCH_ITEMS, "Y", with the record CORR_BITEM_WAITING.
/// Without any there is no record.
void AnswerWaitingItems(Exchange& exchange);

}  // namespace server
