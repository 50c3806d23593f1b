#include "server/setup/demo_history.h"

#include <algorithm>
#include <array>
#include <deque>
#include <future>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/agreed/field_names.h"
#include "platform/agreed/form_numbers.h"
#include "platform/agreed/letter_record.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/batch/batch_runs.h"
#include "server/context/letter_context.h"
#include "server/context/stored_context.h"
#include "server/setup/demo_letter.h"

namespace server {
namespace {

using platform::Timestamp;
using platform::Value;
using std::chrono::days;

namespace print_status = platform::print_status;

constexpr int kFirstNight = 1000;  // the number of the batch run before the first night's
constexpr int kLettersAChunk = 500;

// What became of a letter that could be made, one in so many.
constexpr int kPrintFailed = 40;
constexpr int kReprintFailed = 60;
constexpr int kPrintFailedLastNight = 3;
constexpr int kMailReturned = 12;
constexpr int kReprinted = 20;
constexpr auto kMailTakes = days(9);
constexpr std::string_view kFirstWithReturnedMail = "100031";

constexpr auto kNeverPrinted = std::to_array<std::string_view>(
    {print_status::kAddressNotVerified, print_status::kDataIncomplete, print_status::kWaitsForBatch,
     print_status::kPrintFailed, print_status::kMerged});

struct ErrorText {
  std::string_view status;
  std::array<const char*, 2> texts;
};
constexpr auto kErrorTexts = std::to_array<ErrorText>({
    {print_status::kPrintFailed, {"The printer did not answer.", "The printer is out of paper."}},
    {print_status::kReprintFailed,
     {"The printer did not answer.", "The spooler refused the letter: its queue is full."}},
    {print_status::kAddressNotVerified,
     {"No address of the customer can be used.", "No address of the customer can be used."}},
    {print_status::kDataIncomplete,
     {"The letter's data are incomplete.", "The letter's data are incomplete."}},
});

struct Entry {
  std::string_view name_end;
  const char* text;
};
// What an officer entered for a bookmark, by what its name ends in.
constexpr auto kEntries = std::to_array<Entry>({
    {"_AMT", "$1,250.00"},
    {"_CNT", "12"},
    {"_DT", "the first Monday of next month"},
    {"_TM", "9:30 a.m."},
    {"_PLACE", "Hearing Room 2, 400 Treasury Square"},
    {"_LANG", "Spanish"},
    {"_NBR", "2041"},
    {"NAME", "Sheriff Amos Quillfeather"},
    {"ADDR1", "1 Courthouse Square"},
    {"CITY", "Hartsfield"},
});
constexpr auto kFreeText = "Please bring this letter with you.";

/// What the entry form leaves behind: values in the user's bookmarks, marks on the paragraphs left out.
void EnterByHand(ContextField& root, Draw& draw) {
  for (auto& field : root.children) {
    if ((field.state & state::kUser) != 0) {
      const auto entry =
          std::ranges::find_if(kEntries, [&](const Entry& e) { return field.name.ends_with(e.name_end); });
      field.text = entry == kEntries.end() ? "" : entry->text;
    }
    if ((field.state & state::kParagraph) == 0 || draw.OneIn(2)) continue;
    field.state |= state::kUnselected;
    if (field.name == platform::kFreeTextParagraph) field.text = kFreeText;
  }
}

/// The nightly runs, made as a night makes them.
class DemoNights {
 public:
  DemoNights(Database& database, const DemoSchedule& schedule) : database_(database), schedule_(schedule) {
    // The numbers begin behind this one.
    database_.Change(
        "INSERT INTO batch_run (BTCH_SEQ_NBR, BTCH_STATUS, BTCH_CRTE_TS, WRKR_TXT) VALUES (?, '', '', '')",
        {kFirstNight});
    database_.Change("DELETE FROM batch_run WHERE BTCH_SEQ_NBR = ?", {kFirstNight});
  }

  /// A letter of the history that belongs to a night; letters come in the order of their nights.
  void Add(const LetterSubject& subject, const DemoSlot& slot, std::int64_t letter, std::string_view status) {
    // What waits was left over by the night before.
    const int night = slot.waiting ? slot.night - 1 : slot.night;
    EndBefore(night);
    items_.push_back({.source = std::string(slot.waiting ? run_source::kAgain : run_source::kRule),
                      .letter_type = subject.letter_type,
                      .customer = subject.customer.id,
                      .form_type = subject.form ? subject.form->type : "",
                      .form_number = subject.form ? subject.form->number : "",
                      .letter = letter});
    statuses_.push_back(status);
    ended_ = std::max(ended_, slot.time);
  }
  void EndAll() { EndBefore(schedule_.Nights() + 1); }

 private:
  void EndBefore(int night) {
    for (; night_ < night; ++night_) End();
  }

  void End() {
    const auto begins = schedule_.NightBegins(night_);
    const auto run = CreateRun(database_, items_, begins, "zemlo-night on the demo machine");
    for (std::size_t place = 0; place < items_.size(); ++place) {
      if (statuses_[place] == print_status::kWaitsForBatch) continue;
      const bool succeeded =
          statuses_[place] == print_status::kPrintedByBatch || statuses_[place] == print_status::kMerged;
      RecordItem(database_, run, static_cast<std::int64_t>(place) + 1, *items_[place].letter,
                 succeeded ? ItemResult::kSucceeded : ItemResult::kFailed);
    }
    EndRun(database_, run, std::max(begins, ended_) + std::chrono::seconds(40));
    items_.clear();
    statuses_.clear();
    ended_ = {};
  }

  Database& database_;
  const DemoSchedule& schedule_;
  int night_ = 1;  // the one under way
  std::vector<RunItem> items_;
  std::vector<std::string_view> statuses_;  // of items_
  platform::Timestamp ended_{};
};

/// A letter as it goes into the tables.
struct WrittenLetter {
  DemoLetter letter;
  std::string_view status = print_status::kPrinted;
  Value address_type;
  ContextPacker::Packed context;
};

/// Writes letters, away from the database's thread. One thread at a time.
class Writer {
 public:
  explicit Writer(Database& database) {
    const auto types = database.Select("SELECT DISTINCT LTR_TYP_ID FROM letter_field");
    for (std::size_t row = 0; row < types->RecordCount(); ++row) {
      const auto type = types->Text(row, "LTR_TYP_ID");
      types_.try_emplace(type, FindLetterFields(database, type),
                         ContextPacker(FindContextDictionary(database, type)));
    }
  }

  std::vector<WrittenLetter> Write(std::vector<DemoLetter> letters) {
    std::vector<WrittenLetter> written;
    written.reserve(letters.size());
    for (auto& letter : letters) written.push_back(WriteOne(std::move(letter)));
    return written;
  }

 private:
  struct Type {
    Type(std::vector<LetterField> given, ContextPacker given_packer)
        : fields(std::move(given)), packer(std::move(given_packer)) {}
    std::vector<LetterField> fields;
    FieldRules address_rules = AddressRules(fields);
    ContextPacker packer;
  };

  WrittenLetter WriteOne(DemoLetter letter) {
    auto& type = types_.at(letter.subject.letter_type);
    letter.subject.address_rules = type.address_rules;
    const auto verdict =
        JudgeAddresses(letter.subject.customer, letter.subject.office.state, type.address_rules);
    auto root = BuildLetterContext(letter.subject, type.fields, verdict, /*with_values=*/true,
                                   [&](const LetterField& field) { return letter.findings->at(field.name); });
    const auto status = Status(letter, verdict, root);
    if (status != print_status::kAddressNotVerified && status != print_status::kDataIncomplete)
      EnterByHand(root, letter.draw);
    const auto context = ContextXml(root, {.descriptors = true, .states = true});
    const bool mail = verdict.use == AddressVerdict::Use::kMail;
    return {.letter = std::move(letter),
            .status = status,
            .address_type = verdict.IsUsable() ? Value(mail ? 1 : 2) : Value(),
            .context = type.packer.Pack(platform::ReplaceAll(context, "'", "`"))};
  }

  static std::string_view Status(DemoLetter& letter, const AddressVerdict& verdict,
                                 const ContextField& root) {
    if (verdict.IsRefused()) return print_status::kAddressNotVerified;
    if (root.IsErroneous()) return print_status::kDataIncomplete;
    if (letter.slot.waiting) return print_status::kWaitsForBatch;
    if (letter.slot.merged) return print_status::kMerged;
    if (letter.draw.OneIn(letter.slot.last_night ? kPrintFailedLastNight : kPrintFailed))
      return print_status::kPrintFailed;
    if (letter.draw.OneIn(kReprintFailed)) return print_status::kReprintFailed;
    letter.returned = letter.draw.OneIn(kMailReturned);
    return letter.slot.night == 0 ? print_status::kPrinted : print_status::kPrintedByBatch;
  }

  std::map<std::string, Type> types_;
};

/// Puts written letters into the tables, in their order.
class Recorder {
 public:
  Recorder(Database& database, const DemoLetters& letters, const DemoSchedule& schedule, platform::Date today)
      : database_(database),
        letters_(letters),
        nights_(database, schedule),
        today_(std::chrono::local_days(today)) {}

  void Record(WrittenLetter written) {
    const auto& subject = written.letter.subject;
    const auto& slot = written.letter.slot;
    const auto& county = letters_.CountyColumns(subject.customer.county_number);
    const auto printed = PrintTimes(written);
    const auto& form = subject.form;
    const auto of_form = [&](std::string Form::*part) { return form ? Value((*form).*part) : Value(); };
    database_.Change(
        R"(INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, FORM_NBR, FORM_CK_DGT_NBR, FORM_TYP_CD,
             DCMT_FILE_TXT, PRNT_STTS_CD, PRNT_TS, LST_PRNT_TS, LST_PRCS_TS, SYS_RFRNC_CD, QZ_CNTY_NBR,
             ADDR_TYP_CD, PRCS_ERR_TXT, LST_UPDT_INSP_ID, BTCH_ACTN_CD, WGH_STN_ID, TRP_ID, TRP_DIST_ID,
             QZ_CNTY_DESC)
           VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?))",
        {subject.letter_type,
         subject.customer.id,
         of_form(&Form::number),
         of_form(&Form::check_digit),
         of_form(&Form::type),
         written.letter.template_file,
         std::string(written.status),
         printed.first,
         printed.second,
         slot.time,
         std::string(slot.night == 0 ? platform::letter_origin::kOnline : platform::letter_origin::kBatch),
         subject.customer.county_number,
         written.address_type,
         ErrorOf(written),
         written.letter.officer,
         BatchAction(written),
         Station(written),
         county[0],
         county[1],
         county[2]});
    // The table was empty: its numbers run from 1.
    StoreContext(database_, ++last_number_, written.context);
    if (slot.waiting) GiveToRun(written);
    if (slot.night != 0) nights_.Add(subject, slot, last_number_, written.status);
    NoteReturned(written);
  }

  void EndNights() { nights_.EndAll(); }

  /// Marks the addresses that mail came back from. The customers that show something else stay as they are.
  void MarkReturned() {
    for (const auto& [customer, letter] : returned_) {
      if (customer < kFirstWithReturnedMail) continue;
      database_.Change(
          "INSERT INTO returned_mail (SEQ_NBR, CUST_ID, ADDR_TYP_CD, RTND_DT, UPDT_USER_ID) VALUES (?, ?, ?, "
          "?, ?)",
          {letter.number, customer, letter.address_type, platform::DateText(letter.day), letter.officer});
      const auto* mark = letter.address_type.AsInteger() == platform::letter_address::kMailing
                             ? "MAIL_BAD_FLG"
                             : "RES_BAD_FLG";
      database_.Change("UPDATE customer SET " + std::string(mark) + " = 'Y' WHERE CUST_ID = ?", {customer});
    }
  }

 private:
  struct Returned {
    std::int64_t number;
    Value address_type;
    platform::Date day;
    std::string officer;
  };

  /// Left over by the last run: merged, not printed.
  void GiveToRun(const WrittenLetter& written) {
    database_.Change(
        "INSERT INTO batch_item (SEQ_NBR, ACTN_CD, RQST_TS, RQST_USER_ID, PRNT_STTS_CD) VALUES (?, ?, ?, ?, "
        "?)",
        {last_number_, std::string(platform::batch_action::kBatchAgain), written.letter.slot.time,
         written.letter.officer, std::string(print_status::kMerged)});
  }

  /// What went to a customer later had reached them.
  void NoteReturned(const WrittenLetter& written) {
    const auto& letter = written.letter;
    returned_.erase(letter.subject.customer.id);
    const auto day = std::chrono::floor<days>(letter.slot.time) + kMailTakes;
    const bool was_sent =
        written.status == print_status::kPrinted || written.status == print_status::kPrintedByBatch;
    if (!letter.returned || !was_sent || day > today_) return;
    returned_.emplace(letter.subject.customer.id,
                      Returned{last_number_, written.address_type, platform::Date(day), letter.officer});
  }

  /// The first and the last time; nulls for a letter that was never printed.
  std::pair<Value, Value> PrintTimes(WrittenLetter& written) const {
    if (std::ranges::find(kNeverPrinted, written.status) != kNeverPrinted.end()) return {};
    const auto first = written.letter.slot.time + std::chrono::seconds(20);
    auto& draw = written.letter.draw;
    const bool again = written.status == print_status::kReprintFailed || draw.OneIn(kReprinted);
    const auto last =
        again ? first + days(draw.Between(1, 20)) + std::chrono::minutes(draw.Below(300)) : first;
    return {first, std::min<Timestamp>(last, std::max<Timestamp>(first, today_))};
  }

  static Value ErrorOf(WrittenLetter& written) {
    const auto found = std::ranges::find(kErrorTexts, written.status, &ErrorText::status);
    if (found == kErrorTexts.end()) return {};
    return found->texts[static_cast<std::size_t>(written.letter.draw.Below(2))];
  }

  static Value BatchAction(WrittenLetter& written) {
    if (written.letter.slot.night == 0) return {};
    if (written.letter.slot.waiting) return "REB";
    return written.letter.draw.OneIn(kReprinted) ? "REP" : "RUN";
  }

  /// Citations are written at a weigh station.
  static Value Station(WrittenLetter& written) {
    const auto& form = written.letter.subject.form;
    if (!form || form->type != platform::form_type::kCitation) return {};
    return "ST" + std::to_string(written.letter.draw.Between(11, 29));
  }

  Database& database_;
  const DemoLetters& letters_;
  DemoNights nights_;
  const std::chrono::local_days today_;
  std::int64_t last_number_ = 0;
  std::map<std::string, Returned> returned_;  // by customer: the last letter, where it came back
};

/// Draws and records on this thread while others write what was drawn.
class Pipeline {
 public:
  Pipeline(Database& database, const std::filesystem::path& product_data, int letters, platform::Date today)
      : schedule_(letters, today),
        letters_(database, product_data, today),
        recorder_(database, letters_, schedule_, today),
        total_(letters) {
    const auto writers = std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
    for (unsigned writer = 0; writer < writers; ++writer) writers_.emplace_back(database);
  }

  void Run() {
    for (int chunk = 0; chunk * kLettersAChunk < total_ || !under_way_.empty(); ++chunk) {
      if (under_way_.size() == writers_.size() || chunk * kLettersAChunk >= total_) RecordOldest();
      if (chunk * kLettersAChunk < total_) Start(chunk);
    }
    recorder_.EndNights();
    recorder_.MarkReturned();
  }

 private:
  void Start(int chunk) {
    std::vector<DemoLetter> drawn;
    const int end = std::min(total_, (chunk + 1) * kLettersAChunk);
    for (int index = chunk * kLettersAChunk; index < end; ++index)
      drawn.push_back(letters_.Draw(index, schedule_.At(index)));
    auto& writer = writers_[static_cast<std::size_t>(chunk) % writers_.size()];
    under_way_.push_back(std::async(std::launch::async, [&writer, letters = std::move(drawn)]() mutable {
      return writer.Write(std::move(letters));
    }));
  }

  void RecordOldest() {
    auto written = under_way_.front().get();
    under_way_.pop_front();
    for (auto& letter : written) recorder_.Record(std::move(letter));
  }

  const DemoSchedule schedule_;
  DemoLetters letters_;
  Recorder recorder_;
  const int total_;
  std::deque<Writer> writers_;
  std::deque<std::future<std::vector<WrittenLetter>>> under_way_;  // last: they use the writers
};

}  // namespace

void CreateDemoHistory(Database& database, const std::filesystem::path& product_data, int letters,
                       platform::Date today) {
  if (letters > 0) Pipeline(database, product_data, letters, today).Run();
}

}  // namespace server
