#pragma once

#include <memory>
#include <string>

#include "platform/parties/services.h"
#include "workspace/letters/letter_printing.h"
#include "workspace/letters/letter_templates.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/page_index.h"
#include "workspace/messaging/pending_request.h"

namespace workspace {

/// Letters that were produced before: the reply with a stored data context becomes a preview, a print or a
/// file.
class StoredLetters {
 public:
  struct Uses {
    const platform::Services& services;
    LetterTemplates& templates;
    LetterPrinting& printing;
  };
  explicit StoredLetters(Uses uses) : uses_(uses) {}

  /// Takes the reply that brings a stored letter: mode "PREVIEW", "SAVE", or any other to print.
  ///
  /// The letter is the one that was asked for, whatever row or page the user has turned to since. One of a
  /// batch reprint (page kBatchReprint) uses the template that `letter_type` has today. A failure is
  /// reported; of it, and of a reply without a context, the letter's run is told.
  void MergeLetter(const Reply& reply, PageIndex page, const std::string& mode,
                   const std::string& letter_type);

 private:
  bool Merge(const Reply& reply, PageIndex page, const std::string& mode, const std::string& letter_type);
  std::string TemplateName(const LetterData& letter, PageIndex page, const std::string& letter_type) const;

  const Uses uses_;
};

}  // namespace workspace
