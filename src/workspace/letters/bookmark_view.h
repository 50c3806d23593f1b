#pragma once

#include <string>

#include "platform/parties/services.h"
#include "workspace/letters/letter_forms.h"
#include "workspace/messaging/pending_request.h"

namespace workspace {

/// Shows the fields of a letter that was produced already, and how it was printed.
class BookmarkView {
 public:
  /// The references outlive this. With diagnostics (the setting DontPrint) a letter of the batch letter
  /// browser shows the error of its batch run as well.
  BookmarkView(const platform::Services& services, bool with_diagnostics, LetterForms& forms)
      : services_(services), with_diagnostics_(with_diagnostics), forms_(forms) {}

  /// Takes the reply that brings the letter's context. How it was printed is what its list said when it was
  /// asked for, whatever row or letters are shown by now.
  void ViewBookMark(const Reply& reply);

 private:
  std::string ContextOf(const Reply& reply) const;

  const platform::Services& services_;
  const bool with_diagnostics_;
  LetterForms& forms_;
};

}  // namespace workspace
