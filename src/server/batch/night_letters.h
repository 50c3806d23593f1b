#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/value.h"
#include "server/batch/batch_runs.h"
#include "server/context/letter_fields.h"
#include "server/storage/database.h"

namespace server {

/// A letter of a run before it is merged: its data, or why it cannot be made.
struct NightLetter {
  std::int64_t item = 0;  ///< its number in the run
  RunItem what;
  bool as_stored = false;          ///< printed as it is in the history; else its data are of this night
  std::string context = {};        ///< the data context; "" where there is none
  std::string template_file = {};  ///< of a letter as stored the one it was made from; "": the one in force
  platform::Value check_digit = {};
  platform::Value address_type = {};  ///< ADDR_TYP_CD
  platform::Value county = {};        ///< QZ_CNTY_NBR
  std::string station = {};           ///< troop and district of the customer's county; "" where there is none
  std::string failure = {};           ///< a sentence for a clerk; "" where it can be made
};

/// Looks up what the letters of one run are made from. What is the same for all letters of a type is read
/// once.
class NightLetters {
 public:
  /// `database` outlives this. `today`: the day that the letters are of.
  NightLetters(Database& database, platform::Date today) : database_(database), today_(today) {}

  /// Never a failure: what goes wrong with the letter's data is the letter's own. A letter that is made again
  /// keeps what an officer has entered for it. Within a transaction.
  NightLetter Prepare(std::int64_t item, const RunItem& what);

 private:
  struct Stored;
  const std::vector<LetterField>& FieldsOf(const std::string& letter_type);
  Stored FindStored(const RunItem& what);
  void TakeStored(NightLetter& letter, const Stored& stored);
  std::string StationOf(const std::string& customer);
  void MakeContext(NightLetter& letter, const std::string& entries);

  Database& database_;
  const platform::Date today_;
  std::map<std::string, std::vector<LetterField>> fields_;
};

}  // namespace server
