#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/parties/reference_database.h"
#include "tests/fakes/rows.h"

namespace fakes {

/// Answers statements from a script and writes them down. A statement nobody scripted is refused.
class ScriptedReferenceDatabase : public platform::ReferenceDatabase {
 public:
  /// Returns null for a statement it does not answer.
  using Answer = std::function<std::shared_ptr<platform::RecordSet>(const std::string& statement)>;

  /// Every statement that was run, oldest first.
  std::vector<std::string> statements;

  /// The latest script is asked first.
  void AnswersBy(Answer answer) { answers_.push_back(std::move(answer)); }
  void Answers(std::string statement, std::shared_ptr<platform::RecordSet> rows) {
    AnswersBy([statement = std::move(statement), rows = std::move(rows)](const std::string& asked) {
      return asked == statement ? CopyOf(*rows) : nullptr;
    });
  }
  void AnswersWhatContains(std::string part, std::shared_ptr<platform::RecordSet> rows) {
    AnswersBy([part = std::move(part), rows = std::move(rows)](const std::string& asked) {
      return asked.find(part) != std::string::npos ? CopyOf(*rows) : nullptr;
    });
  }

  std::shared_ptr<platform::RecordSet> Select(const std::string& statement) override {
    statements.push_back(statement);
    for (auto answer = answers_.rbegin(); answer != answers_.rend(); ++answer) {
      if (auto rows = (*answer)(statement)) return rows;
    }
    throw platform::Failure(platform::Failure::Kind::kRefused,
                            "No answer is scripted for \"" + statement + "\".");
  }

 private:
  std::vector<Answer> answers_;
};

}  // namespace fakes
