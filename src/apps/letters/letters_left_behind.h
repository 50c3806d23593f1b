#pragma once

#include <string>
#include <vector>

#include "apps/letters/listing.h"
#include "host/data_folder.h"
#include "host/print_journal.h"

namespace apps {

/// The notes of printed letters that no running program deals with. Nobody else deals with them while this
/// lives.
class LettersLeftBehind {
 public:
  explicit LettersLeftBehind(const host::DataFolder& folder);

  /// Those of other users and damaged ones included.
  std::size_t Count() const { return letters_.size() + Others().size(); }
  const std::vector<platform::PrintJournal::Left>& letters() const { return letters_; }
  /// The letter's note as the command lists it: key, letter, state, user.
  static std::vector<std::string> Row(const platform::PrintJournal::Left& letter);
  /// Rows of those that this user can do nothing about.
  std::vector<std::vector<std::string>> Others() const;
  /// Throws Failure where the note cannot be removed.
  void Forget(const std::string& key) { journal_.Forget(key); }

 private:
  /// Keeps what is wrong with a note; nothing stops for it.
  class Damages : public platform::ErrorReporter {
   public:
    void ReportError(std::string_view description, std::string_view, std::string_view) noexcept override {
      descriptions.emplace_back(description);
    }
    std::string ErrorText(std::uint32_t) const override { return ""; }

    std::vector<std::string> descriptions;
  };

  Damages damages_;
  host::PrintJournal journal_;
  std::vector<platform::PrintJournal::Left> letters_;
};

}  // namespace apps
