#include "workspace/document/reply_routes.h"

#include <string>
#include <utility>

#include "platform/agreed/letter_types.h"
#include "platform/agreed/requests.h"

namespace workspace {

namespace {

using Status = ReplyRoute::StatusAfterwards;
using Action = ReplyRoute::Action;
using Step = std::function<void()>;

using platform::letter_type::kTaxLiability;
using platform::letter_type::kTaxWarrant;

/// The steps of the table, by the names it uses for them.
class Steps {
 public:
  Steps(const ReplyHandlers& handlers, Pages& pages) : handlers_(handlers), pages_(pages) {}

  /// A handler that needs no more than the reply.
  Action Take(std::function<void(const Reply&)> ReplyHandlers::*handler) const {
    return [&handlers = handlers_, handler](const Reply& reply) {
      if (handlers.*handler) (handlers.*handler)(reply);
    };
  }
  /// A handler without arguments.
  Step Do(std::function<void()> ReplyHandlers::*handler) const {
    return [&handlers = handlers_, handler] {
      if (handlers.*handler) (handlers.*handler)();
    };
  }
  Action Then(Step step) const {
    return [step = std::move(step)](const Reply&) { step(); };
  }
  Action FillHistory() const {
    return [this_ = *this](const Reply& reply) {
      if (this_.handlers_.FillHistory) this_.handlers_.FillHistory(reply, this_.pages_.tabs.current());
    };
  }
  Action Merge(const char* mode) const {
    return [this_ = *this, mode](const Reply& reply) {
      this_.MergeLetter(reply, this_.pages_.tabs.current(), mode, "");
    };
  }
  Action PrintNext() const {
    return [this_ = *this, print = Merge("PRINT"),
            stop = Do(&ReplyHandlers::StopLocalReprint)](const Reply& reply) {
      const auto& goes_on = this_.handlers_.LocalReprintGoesOn;
      !goes_on || goes_on() ? print(reply) : stop();
    };
  }
  std::function<bool(const Reply&, const std::string&)> LocalReprintTakesError() const {
    return [&takes = handlers_.LocalReprintTakesError](const Reply& reply, const std::string& error) {
      return takes && takes(reply, error);
    };
  }
  std::function<bool()> LocalReprintIsOver() const {
    return [&is_over = handlers_.LocalReprintIsOver] { return !is_over || is_over(); };
  }
  Action TakeTemplateFolder() const {
    return [decode = Take(&ReplyHandlers::DecodeNetworkPath),
            copy = Do(&ReplyHandlers::CopyTemplate)](const Reply& reply) {
      decode(reply);
      copy();
    };
  }
  Action OfferReprint(const char* letter_type) const {
    return [&handlers = handlers_, letter_type](const Reply& reply) {
      if (handlers.ProcessBatchReprint) handlers.ProcessBatchReprint(reply, letter_type);
    };
  }
  Action ReprintNext(const char* mode, const char* letter_type) const {
    return [this_ = *this, mode, letter_type](const Reply& reply) {
      const auto& has_letters = this_.handlers_.HasLettersToReprint;
      if (has_letters && has_letters(letter_type)) {
        this_.MergeLetter(reply, PageIndex::kBatchReprint, mode, letter_type);
      } else {
        this_.SendCount("Saving batch");
      }
    };
  }
  Step ReportCount() const {
    return [this_ = *this] { this_.SendCount(""); };
  }
  Step EnableLetterActions() const {
    return [&pages = pages_] { pages.tracking.letter_action.SetEnabled(true); };
  }
  // The user may have turned to the other page since the search was sent.
  Step EnableLetterGrids() const {
    return [&pages = pages_] {
      pages.correspondence.sdgGrid.SetEnabled(true);
      pages.tracking.sdgGrid.SetEnabled(true);
    };
  }
  Step EnableBatchGrid() const {
    return [&pages = pages_] { pages.batch.sdgGrid.SetEnabled(true); };
  }

 private:
  void MergeLetter(const Reply& reply, PageIndex page, const char* mode, const char* letter_type) const {
    if (handlers_.MergeLetter) handlers_.MergeLetter(reply, page, mode, letter_type);
  }
  void SendCount(std::string_view status) const {
    if (handlers_.SendBatchCount) handlers_.SendBatchCount(status);
  }

  const ReplyHandlers& handlers_;
  Pages& pages_;
};

}  // namespace

std::vector<ReplyRoute> ReplyRoutes(const ReplyHandlers& handlers, Pages& pages) {
  using Handlers = ReplyHandlers;
  const Steps steps(handlers, pages);
  const Step none;
  const Action nothing;
  // Request, action, status afterwards, after an error reply, always.
  return {
      // Sent under the name of the request before.
      {"",
       steps.Take(&Handlers::ReturnMailReplied),
       Status::kReady,
       none,
       none,
       {},
       platform::record_name::kReturnMailOutcome},
      {"Letter_History", steps.FillHistory(), Status::kSetByAction, none, steps.EnableLetterGrids()},
      {"Batch_History", steps.Take(&Handlers::FillBatchHistory), Status::kSetByAction, none,
       steps.EnableBatchGrid()},
      {"XMLRequest", steps.Take(&Handlers::CreateNewCorrespondence), Status::kSetByAction,
       steps.Do(&Handlers::EnableCreateLetter), none},
      {"GetNetworkPath", steps.TakeTemplateFolder(), Status::kSetByAction, none, none},
      // The next letter of a run shows a status of its own.
      {"LetterAU", steps.Take(&Handlers::BatchItemsReplied), Status::kReady,
       steps.Do(&Handlers::BatchItemsFailed), none, steps.LocalReprintIsOver()},
      {"BatchAU", nothing, Status::kReady, none, none},
      {"Letter_Preview", steps.Merge("PREVIEW"), Status::kReady, none, none},
      {"Letter_BKView", steps.Take(&Handlers::ViewBookMark), Status::kReady, none, none},
      {"Letter_Print",
       steps.PrintNext(),
       Status::kReady,
       steps.Do(&Handlers::StopLocalReprint),
       none,
       {},
       {},
       steps.LocalReprintTakesError()},
      {"Letter_Save", steps.Merge("SAVE"), Status::kReady, none, none},
      {"CustomerFromLetter", steps.Take(&Handlers::FillCustFromLetter), Status::kReady,
       steps.EnableLetterActions(), steps.EnableLetterActions()},
      {"CustomerInq", steps.Take(&Handlers::FillCustomerInfo), Status::kReady, none, none},
      {"Batch_Reprint", steps.Then(steps.Do(&Handlers::SendBatchInq)), Status::kSetByAction, none, none},
      {"Batch_CTL", steps.OfferReprint(kTaxLiability), Status::kSetByAction, none, none},
      {"Batch_TaxWarrant", steps.OfferReprint(kTaxWarrant), Status::kSetByAction, none, none},
      {"RePrint_CTL", steps.ReprintNext("RePrint_CTL", kTaxLiability), Status::kSetByAction,
       steps.ReportCount(), none},
      {"RePrint_Tax_Warrant", steps.ReprintNext("RePrint_Tax_Warrant", kTaxWarrant), Status::kSetByAction,
       steps.ReportCount(), none},
  };
}

}  // namespace workspace
