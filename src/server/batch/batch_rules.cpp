#include "server/batch/batch_rules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <set>
#include <utility>

#include "platform/agreed/form_numbers.h"
#include "platform/tab_table.h"
#include "platform/text.h"
#include "server/batch/account_balance.h"
#include "server/context/letter_fields.h"

namespace server {
namespace {

using platform::Date;
using platform::Quoted;
using platform::TabTable;
using platform::Value;

constexpr auto kRuleColumns = std::to_array<std::string_view>(
    {"RULE_NM", "LTR_TYP_ID", "FORM_TYP_CD", "CONDITION", "AGAIN_AFTER", "RULE_DES"});

constexpr std::string_view kLastLetter =
    "(SELECT MAX(SUBSTR(COALESCE(LST_PRNT_TS, LST_PRCS_TS), 1, 10)) FROM letter_history AS other WHERE"
    " other.FORM_NBR = form.FORM_NBR AND other.FORM_TYP_CD = form.FORM_TYP_CD AND other.LTR_TYP_ID = ?)";
constexpr std::string_view kCounty =
    "(SELECT customer.QZ_CNTY_NBR FROM customer WHERE customer.CUST_ID = form.CUST_ID)";
constexpr std::string_view kTroop =
    "(SELECT TRP_ID FROM county JOIN customer ON customer.QZ_CNTY_NBR = county.QZ_CNTY_NBR WHERE"
    " customer.CUST_ID = form.CUST_ID)";

enum class Kind { kText, kAmount, kDays };
struct Subject {
  std::string_view name;
  std::string_view expression;  ///< of kDays the day that is counted from; of kAmount the balance
  Kind kind;
};
// What a condition may be about. days_since_letter is followed by the letter type in brackets.
constexpr auto kSubjects = std::to_array<Subject>({
    {"status", "FORM_STTS_CD", Kind::kText},
    {"balance", "", Kind::kAmount},
    {"days_since_issue", "ISS_DT", Kind::kDays},
    {"days_since_stop", "STP_DT", Kind::kDays},
    {"days_since_payment", "LST_PYMT_DT", Kind::kDays},
    {"days_since_letter", kLastLetter, Kind::kDays},
    {"county", kCounty, Kind::kText},
    {"troop", kTroop, Kind::kText},
});

struct Operator {
  std::string_view sign;
  std::string_view of_days;  ///< many days ago is an early day
};
constexpr auto kOperators =
    std::to_array<Operator>({{"<=", ">="}, {">=", "<="}, {"<>", "<>"}, {"=", "="}, {"<", ">"}, {">", "<"}});

std::optional<int> WholeDays(std::string_view text) {
  int number = 0;
  const auto* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  return read.ec == std::errc() && read.ptr == end && number >= 0 ? std::optional(number) : std::nullopt;
}

/// Reads "status = O and balance > 0"; a clause of what is wrong is thrown.
class ConditionReader {
 public:
  explicit ConditionReader(Date today) : today_(today) {}

  BatchRule::Condition Read(std::string_view text) {
    for (;;) {
      const auto end = text.find(" and ");
      ReadTerm(platform::Trim(text.substr(0, end)));
      if (end == std::string_view::npos) return std::move(condition_);
      text.remove_prefix(end + 5);
    }
  }

  struct Fault {
    std::string text;
  };

 private:
  void ReadTerm(std::string_view term) {
    const auto at = term.find_first_of("<>=");
    if (at == std::string_view::npos)
      throw Fault{Quoted(std::string(term)) + " has no comparison; write it like \"balance > 0\""};
    const auto [subject, letter_type] = ReadSubject(platform::Trim(term.substr(0, at)));
    const auto signs = term.substr(at, term.find_first_not_of("<>=!", at) - at);
    const auto sign = std::ranges::find(kOperators, signs, &Operator::sign);
    if (sign == kOperators.end())
      throw Fault{Quoted(std::string(signs)) + " is no comparison; write =, <>, <, <=, > or >="};
    if (!letter_type.empty()) condition_.values.emplace_back(letter_type);
    const auto value = platform::Trim(term.substr(at + signs.size()));
    if (subject->kind == Kind::kText && sign->sign != "=" && sign->sign != "<>")
      throw Fault{Quoted(std::string(subject->name)) + " is compared with = or <> only"};
    const auto expression =
        subject->kind == Kind::kAmount ? BalanceOf("form") : std::string(subject->expression);
    condition_.text += (condition_.text.empty() ? "" : " AND ") + expression + " " +
                       std::string(subject->kind == Kind::kDays ? sign->of_days : sign->sign) + " ?";
    condition_.values.push_back(ReadValue(*subject, value));
  }

  static std::pair<const Subject*, std::string> ReadSubject(std::string_view name) {
    const auto bracket = name.find('(');
    std::string letter_type;
    if (bracket != std::string_view::npos && name.ends_with(')'))
      letter_type = platform::Trim(name.substr(bracket + 1, name.size() - bracket - 2));
    const auto* subject = std::ranges::find(kSubjects, name.substr(0, bracket), &Subject::name);
    if (subject == kSubjects.end()) {
      std::string known;
      for (const auto& one : kSubjects) known += (known.empty() ? "" : ", ") + std::string(one.name);
      throw Fault{Quoted(std::string(name)) + " is nothing a rule can ask; it can ask for " + known};
    }
    const bool takes_letter = subject->name == "days_since_letter";
    if (takes_letter == letter_type.empty())
      throw Fault{
          takes_letter
              ? "days_since_letter names no letter type; write it like \"days_since_letter(104) >= 30\""
              : Quoted(std::string(name)) + " takes no brackets"};
    return {subject, letter_type};
  }

  Value ReadValue(const Subject& subject, std::string_view text) const {
    if (text.empty()) throw Fault{Quoted(std::string(subject.name)) + " is compared with nothing"};
    if (subject.kind == Kind::kText) return std::string(text);
    if (subject.kind == Kind::kAmount) {
      if (const auto amount = platform::Money::Parse(std::string(text))) return amount->cents();
      throw Fault{Quoted(std::string(text)) + " is no amount"};
    }
    const auto days = WholeDays(text);
    if (!days) throw Fault{Quoted(std::string(text)) + " is no number of days"};
    return platform::DateText(Date(std::chrono::local_days(today_) - std::chrono::days(*days)));
  }

  const Date today_;
  BatchRule::Condition condition_;
};

/// Reads one row; nothing where it is wrong.
std::optional<BatchRule> ReadRule(const TabTable& table, std::size_t row, Database& database, Date today,
                                  platform::TableFaults& faults) {
  const auto before = faults.Count();
  const auto wrong = [&](std::string_view column, const std::string& what) {
    faults.Add(table.Place(row, column), what);
  };
  BatchRule rule{.name = table.Text(row, "RULE_NM"),
                 .letter_type = table.Text(row, "LTR_TYP_ID"),
                 .form_type = table.Text(row, "FORM_TYP_CD"),
                 .condition = {},
                 .description = table.Text(row, "RULE_DES"),
                 .place = table.Place(row, "LTR_TYP_ID")};
  if (rule.name.empty()) wrong("RULE_NM", "The rule has no name. Give it one of its own.");
  if (FindLetterFields(database, rule.letter_type).empty())
    wrong("LTR_TYP_ID", "There is no letter type " + Quoted(rule.letter_type) + ".");
  if (rule.form_type.size() != 1)
    wrong("FORM_TYP_CD", Quoted(rule.form_type) + " is no form type. Write its letter.");
  try {
    rule.condition = ConditionReader(today).Read(table.Text(row, "CONDITION"));
  } catch (const ConditionReader::Fault& fault) {
    wrong("CONDITION", fault.text + ".");
  }
  const auto& again = table.Text(row, "AGAIN_AFTER");
  const auto days = again.empty() ? std::optional(0) : WholeDays(again);
  if (!days || (!again.empty() && *days == 0))
    wrong("AGAIN_AFTER", Quoted(again) + " is no number of days from 1 up. Leave it empty for once.");
  rule.again_after_days = days.value_or(0);
  return faults.Count() == before ? std::optional(std::move(rule)) : std::nullopt;
}

}  // namespace

std::vector<BatchRule> ReadBatchRules(const std::filesystem::path& file, Database& database, Date today,
                                      platform::TableFaults& faults) {
  const auto table = TabTable::Read(file, kRuleColumns, faults);
  std::vector<BatchRule> rules;
  std::set<std::string> names;
  std::set<std::pair<std::string, std::string>> letters;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    const auto name = table.Text(row, "RULE_NM");
    if (!name.empty() && !names.insert(name).second)
      faults.Add(table.Place(row, "RULE_NM"),
                 "There is a rule " + Quoted(name) + " already. Give this one another name.");
    const auto& type = table.Text(row, "LTR_TYP_ID");
    if (!letters.emplace(type, table.Text(row, "FORM_TYP_CD")).second)
      faults.Add(table.Place(row, "LTR_TYP_ID"),
                 "There is a rule for this letter already: two would write it twice.");
    if (auto rule = ReadRule(table, row, database, today, faults)) rules.push_back(*std::move(rule));
  }
  return rules;
}

}  // namespace server
