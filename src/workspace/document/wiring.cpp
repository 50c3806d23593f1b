#include "workspace/document/wiring.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <variant>

namespace workspace {

namespace {

using platform::Connection;
using Handler = std::function<void()>;

enum class Sends { kNothing, kRequest };

/// A command of the user. One without a handler stays disabled, whatever enables it.
/// Decision [unhandled-commands].
struct CommandRow {
  std::variant<platform::Command*, platform::OptionButton*> control;
  Sends sends;  ///< what sends a request has to wait while a reply is awaited
  Handler handler;
};

std::vector<CommandRow> Commands(Pages& pages, Parts& parts) {
  auto& online = pages.correspondence.OptOnline;
  auto& tracking = pages.tracking;
  auto& batch = pages.batch;
  const auto act = [&parts](std::size_t option) -> Handler {
    return [&parts, option] { parts.online_actions.OnlineActClick(option); };
  };
  const auto act_on_letters = [&parts](std::size_t option) -> Handler {
    return [&parts, option] { parts.letter_actions.LetterActClick(option); };
  };
  const auto clear = [&parts](PageIndex page) -> Handler {
    return [&parts, page] { parts.letter_request.ClearField(page); };
  };
  const Handler not_yet;

  std::vector<CommandRow> rows = {
      {&online[CorrespondencePage::kCreateLetter], Sends::kRequest, act(CorrespondencePage::kCreateLetter)},
      {&online[CorrespondencePage::kClear], Sends::kNothing, act(CorrespondencePage::kClear)},
      {&online[CorrespondencePage::kViewLetter], Sends::kRequest, act(CorrespondencePage::kViewLetter)},
      {&online[CorrespondencePage::kPrintLetter], Sends::kRequest, act(CorrespondencePage::kPrintLetter)},
      {&tracking.search, Sends::kRequest, [&parts] { parts.history_search.mCmdTracking_Click(); }},
      {&tracking.clear, Sends::kNothing, clear(PageIndex::kTracking)},
      {&batch.cmdBatch[BatchPage::kSearch], Sends::kRequest, [&parts] { parts.batch_history.Search(); }},
      {&batch.cmdBatch[BatchPage::kClear], Sends::kNothing,
       [&parts] { parts.fields.batch_criteria.Clear(); }},
  };
  for (const auto page : {PageIndex::kCorrespondence, PageIndex::kTracking}) {
    auto& letter_page = pages.Letter(page);
    auto& selection = parts.customer_selection;
    rows.push_back({&letter_page.panel.select_customer, Sends::kRequest,
                    [&selection, &letter_page, page] { selection.SelectCustomer(page, letter_page.panel); }});
    rows.push_back({&letter_page.panel.select_account, Sends::kRequest, [&selection, &letter_page, page] {
                      selection.SelectAccount(
                          page, {letter_page.panel, letter_page.ZEMLO_FormTypeCodes, letter_page.txtFormNum});
                    }});
  }
  for (std::size_t option = 0; option < tracking.OptLetter.size(); ++option) {
    rows.push_back({&tracking.OptLetter[option], Sends::kRequest, act_on_letters(option)});
  }
  for (std::size_t option = 0; option < batch.OptBatchAct.size(); ++option) {
    const bool is_there = option == BatchPage::kResubmitBatch || option == BatchPage::kBatchStatistics;
    const Handler act_on_run = [&parts, option] { parts.batch_actions.BatchActClick(option); };
    rows.push_back({&batch.OptBatchAct[option], Sends::kRequest, is_there ? act_on_run : not_yet});
  }
  return rows;
}

class Wiring {
 public:
  explicit Wiring(Parts& parts) : parts_(parts) {}

  void ConnectCommands(const std::vector<CommandRow>& rows) {
    for (const auto& [control, sends, handler] : rows) {
      const auto run = sends == Sends::kRequest ? BehindTheGate(handler) : handler;
      const bool is_handled = handler != nullptr;
      std::visit([&](auto* command) { is_handled ? ConnectCommand(*command, run) : KeepDisabled(*command); },
                 control);
    }
  }

  void ConnectFields() {
    for (auto& connection : parts_.fields.Connect()) Add(std::move(connection));
  }
  void ConnectLetterPage(LetterPage& page, PageIndex index) {
    auto& request = parts_.letter_request;
    Add(page.ZEMLO_LetterType.Change.Connect([&request, index] { request.LetterTypeChanged(index); }));
    Check(page.ZEMLO_FormTypeCodes.Change, index);
    for (auto* list : {&page.ZEMLO_LetterType, &page.ZEMLO_FormTypeCodes}) {
      CheckText(*list, index);
      Check(list->Left, index);
    }
    Check(page.panel.customer_id.LookChanged, index);
  }
  void ConnectLetterGrids(Pages& pages) {
    Add(pages.tracking.sdgGrid.Click.Connect([&grid = parts_.letter_grid] { grid.sdgGrid_Click(); }));
    Add(pages.correspondence.sdgGrid.Click.Connect(
        [&grid = parts_.correspondence_grid] { grid.sdgGrid_Click(); }));
    for (const auto page : {PageIndex::kCorrespondence, PageIndex::kTracking}) {
      Add(pages.sdgGrid(page).RowLoaded.Connect(
          [&format = parts_.row_format, page](std::size_t row) { format.sdgGrid_RowLoaded(page, row); }));
    }
  }
  void ConnectSearch(TrackingPage& page) {
    for (auto* date : {&page.from_date, &page.to_date}) Check(date->Changed, PageIndex::kTracking);
    Check(page.txtBatch.Changed, PageIndex::kTracking);
    for (auto& option : page.OptLetterStatus) Check(option.Click, PageIndex::kTracking);
  }
  void ConnectBatchSearch(BatchPage& page) {
    auto& history = parts_.batch_history;
    Add(page.sdgGrid.Click.Connect([&history] { history.sdgGrid_Click(); }));
    Add(page.sdgGrid.RowLoaded.Connect([&history](std::size_t row) { history.sdgGrid_RowLoaded(row); }));
    for (auto* date : {&page.start_date, &page.end_date}) Check(date->Changed, PageIndex::kBatch);
  }

  std::vector<Connection> Take() { return std::move(connections_); }

 private:
  Handler BehindTheGate(const Handler& handler) const {
    return [&gate = parts_.gate, handler] { gate.RunPressed(handler); };
  }
  void ConnectCommand(platform::Command& command, const Handler& run) { Add(command.Click.Connect(run)); }
  void ConnectCommand(platform::OptionButton& option, const Handler& run) {
    Add(option.Click.Connect(run));
    Add(option.ReleasedWhenSelected.Connect(run));
  }
  void KeepDisabled(platform::Control& control) {
    control.SetEnabled(false);
    control.why_disabled = [] { return "This version of the program does not do this yet."; };
    Add(control.LookChanged.Connect([&control] { control.SetEnabled(false); }));
  }
  void Add(Connection connection) { connections_.push_back(std::move(connection)); }
  void Check(platform::Event<>& changed, PageIndex page) {
    Add(changed.Connect([&check = parts_.field_check, page] { check.CheckEdit(page); }));
  }
  // A text that was typed and matches no row is no Change of the list.
  void CheckText(composition::ZEMLO_LetterCombo& list, PageIndex page) {
    Add(list.ContentChanged.Connect(
        [&list, &check = parts_.field_check, page, last = std::string()]() mutable {
          if (list.shown_text() == last) return;
          last = list.shown_text();
          check.CheckEdit(page);
        }));
  }

  Parts& parts_;
  std::vector<Connection> connections_;
};

}  // namespace

std::vector<Connection> ConnectControls(Pages& pages, Parts& parts) {
  Wiring wiring(parts);
  wiring.ConnectLetterPage(pages.correspondence, PageIndex::kCorrespondence);
  wiring.ConnectLetterPage(pages.tracking, PageIndex::kTracking);
  wiring.ConnectFields();
  wiring.ConnectCommands(Commands(pages, parts));
  wiring.ConnectSearch(pages.tracking);
  wiring.ConnectLetterGrids(pages);
  wiring.ConnectBatchSearch(pages.batch);
  return wiring.Take();
}

}  // namespace workspace
