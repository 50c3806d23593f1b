#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "composition/node_state.h"
#include "platform/parties/services.h"
#include "platform/record_set.h"
#include "workspace/letters/letter_customer.h"
#include "workspace/letters/letter_forms.h"
#include "workspace/letters/letter_printing.h"
#include "workspace/letters/letter_templates.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/letter_request_fields.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {

/// The letter that is chosen on the page, and the customer shown beside it.
struct ChosenLetter {
  std::string letter_type = {};
  std::string letter_name = {};  ///< in words
  std::string customer_id = {};  ///< trimmed
  std::string customer_name = {};
};

/// Makes a letter of a valid request: its data context is asked for, completed and previewed.
class LetterGeneration {
 public:
  struct Uses {
    const platform::Services& services;
    const std::string& message_title;
    LetterRequestFields& request;  ///< takes over the form as the server knows it
    RequestEnvelope& envelope;
    LetterTemplates& templates;
    LetterForms& forms;
    LetterPrinting& printing;
    LetterCustomer& customer;
  };
  explicit LetterGeneration(Uses uses) : uses_(uses) {}

  /// Asks for the data context of the chosen letter; where no letter can be made of its template, says
  /// so and stops.
  void SelectNewType(const ChosenLetter& chosen);
  /// Takes the reply to that: first of all whom the letter is for, see LetterCustomer.
  void CreateNewCorrespondence(const Reply& reply);
  /// The letter whose data came last; an empty one before.
  const LetterData& letter() const { return letter_; }
  /// A letter whose data are without an error is handed to `take` from now on, and not made: it needs no
  /// template.
  void HandOut(std::function<void(const LetterData&)> take) { take_ = std::move(take); }
  /// Letters are made of this template from now on, whatever the catalogue has and the template's errors are,
  /// and never recorded.
  void TryTemplate(TemplateInForce tried) { tried_ = std::move(tried); }

 private:
  /// Adds the record that the letter is asked for with. Sends nothing.
  void SendXMLRequest(RequestDescription& message) const;
  bool RequireTemplate(const TemplateInForce& in_force) const;
  void TakeHistoryRow(const platform::RecordSet& row);
  void WarnOfReturnedMail(const composition::ZEMLO_NodeState& root) const;
  void TellWhyAddressesFail(const platform::XmlDocument& context) const;
  void TellAddressErrors(const composition::ZEMLO_NodeState& root) const;
  void FinishLetter(const composition::ZEMLO_NodeState& root, LetterData letter,
                    const std::string& request_name) const;
  void CompleteLetter(LetterData& letter) const;
  void Tell(const std::string& text, platform::MessageIcon icon) const;

  const Uses uses_;
  LetterData letter_;
  std::function<void(const LetterData&)> take_;
  std::optional<TemplateInForce> tried_;
};

}  // namespace workspace
