#include "workspace/document/reply_routes.h"

#include <string>
#include <utility>

namespace workspace {

namespace {

using Status = ReplyRoute::StatusAfterwards;
using Step = std::function<void()>;

// The letter types a batch is reprinted by.
constexpr const char* kTaxLiability = "110";
constexpr const char* kTaxWarrant = "109";

/// The steps of the table, by the names it uses for them.
class Steps {
 public:
  Steps(const ReplyHandlers& handlers, Pages& pages) : handlers_(handlers), pages_(pages) {}

  /// A handler without arguments.
  Step Do(std::function<void()> ReplyHandlers::*handler) const {
    return [&handlers = handlers_, handler] {
      if (handlers.*handler) (handlers.*handler)();
    };
  }
  Step FillHistory() const {
    return [this_ = *this] {
      if (this_.handlers_.FillHistory) this_.handlers_.FillHistory(this_.pages_.tabs.current());
    };
  }
  Step Merge(const char* mode) const {
    return [this_ = *this, mode] { this_.MergeLetter(this_.pages_.tabs.current(), mode, ""); };
  }
  Step PrintNext() const {
    return [this_ = *this, print = Merge("PRINT"), stop = Do(&ReplyHandlers::StopLocalReprint)] {
      const auto& goes_on = this_.handlers_.LocalReprintGoesOn;
      !goes_on || goes_on() ? print() : stop();
    };
  }
  std::function<bool()> LocalReprintIsOver() const {
    return [&is_over = handlers_.LocalReprintIsOver] { return !is_over || is_over(); };
  }
  Step TakeTemplateFolder() const {
    return [decode = Do(&ReplyHandlers::DecodeNetworkPath), copy = Do(&ReplyHandlers::CopyTemplate)] {
      decode();
      copy();
    };
  }
  Step OfferReprint(const char* letter_type) const {
    return [&handlers = handlers_, letter_type] {
      if (handlers.ProcessBatchReprint) handlers.ProcessBatchReprint(letter_type);
    };
  }
  Step ReprintNext(const char* mode, const char* letter_type) const {
    return [this_ = *this, mode, letter_type] {
      const auto& has_letters = this_.handlers_.HasLettersToReprint;
      if (has_letters && has_letters(letter_type)) {
        this_.MergeLetter(PageIndex::kBatchReprint, mode, letter_type);
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
  void MergeLetter(PageIndex page, const char* mode, const char* letter_type) const {
    if (handlers_.MergeLetter) handlers_.MergeLetter(page, mode, letter_type);
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
  // Request, action, status afterwards, after an error reply, always.
  return {
      {"Letter_History", steps.FillHistory(), Status::kSetByAction, none, steps.EnableLetterGrids()},
      {"Batch_History", steps.Do(&Handlers::FillBatchHistory), Status::kSetByAction, none,
       steps.EnableBatchGrid()},
      {"XMLRequest", steps.Do(&Handlers::CreateNewCorrespondence), Status::kSetByAction,
       steps.Do(&Handlers::EnableCreateLetter), none},
      {"GetNetworkPath", steps.TakeTemplateFolder(), Status::kSetByAction, none, none},
      // The next letter of a run shows a status of its own.
      {"LetterAU", none, Status::kReady, none, none, steps.LocalReprintIsOver()},
      {"BatchAU", none, Status::kReady, none, none},
      {"Letter_Preview", steps.Merge("PREVIEW"), Status::kReady, none, none},
      {"Letter_BKView", steps.Do(&Handlers::ViewBookMark), Status::kReady, none, none},
      {"Letter_Print", steps.PrintNext(), Status::kReady, steps.Do(&Handlers::StopLocalReprint), none},
      {"Letter_Save", steps.Merge("SAVE"), Status::kReady, none, none},
      {"CustomerFromLetter", steps.Do(&Handlers::FillCustFromLetter), Status::kReady,
       steps.EnableLetterActions(), steps.EnableLetterActions()},
      {"CustomerInq", steps.Do(&Handlers::FillCustomerInfo), Status::kReady, none, none},
      {"Batch_Reprint", steps.Do(&Handlers::SendBatchInq), Status::kSetByAction, none, none},
      {"Batch_CTL", steps.OfferReprint(kTaxLiability), Status::kSetByAction, none, none},
      {"Batch_TaxWarrant", steps.OfferReprint(kTaxWarrant), Status::kSetByAction, none, none},
      {"RePrint_CTL", steps.ReprintNext("RePrint_CTL", kTaxLiability), Status::kSetByAction,
       steps.ReportCount(), none},
      {"RePrint_Tax_Warrant", steps.ReprintNext("RePrint_Tax_Warrant", kTaxWarrant), Status::kSetByAction,
       steps.ReportCount(), none},
  };
}

}  // namespace workspace
