#include "workspace/document/wiring.h"

#include <cstddef>
#include <string>
#include <utility>

namespace workspace {

namespace {

using platform::Connection;

class Wiring {
 public:
  explicit Wiring(Parts& parts) : parts_(parts) {}

  void ConnectLetterPage(LetterPage& page, PageIndex index) {
    auto& request = parts_.letter_request;
    Add(page.ZEMLO_LetterType.Change.Connect([&request, index] { request.LetterTypeChanged(index); }));
    Check(page.ZEMLO_FormTypeCodes.Change, index);
    CheckText(page.ZEMLO_LetterType, index);
    CheckText(page.ZEMLO_FormTypeCodes, index);
    Check(page.txtFormNum.Changed, index);
    Check(page.panel.customer_id.LookChanged, index);
  }
  void ConnectOnlineActions(CorrespondencePage& page) {
    auto& actions = parts_.online_actions;
    for (std::size_t option = 0; option < page.OptOnline.size(); ++option) {
      const auto act = [&actions, option] { actions.OnlineActClick(option); };
      Add(page.OptOnline[option].Click.Connect(act));
      Add(page.OptOnline[option].ReleasedWhenSelected.Connect(act));
    }
  }
  void ConnectSearch(TrackingPage& page) {
    for (auto* date : {&page.from_date, &page.to_date}) Check(date->Changed, PageIndex::kTracking);
    for (auto* text : {&page.txtTD, &page.txtBatch}) Check(text->Changed, PageIndex::kTracking);
    for (auto& option : page.OptLetterStatus) Check(option.Click, PageIndex::kTracking);
  }
  void ConnectBatchSearch(BatchPage& page) {
    for (auto* date : {&page.start_date, &page.end_date}) Check(date->Changed, PageIndex::kBatch);
    for (auto& option : page.OptBatchDate) Check(option.Click, PageIndex::kBatch);
    for (auto& option : page.OptBatchStatus) Check(option.Click, PageIndex::kBatch);
  }

  std::vector<Connection> Take() { return std::move(connections_); }

 private:
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
  wiring.ConnectOnlineActions(pages.correspondence);
  wiring.ConnectSearch(pages.tracking);
  wiring.ConnectBatchSearch(pages.batch);
  return wiring.Take();
}

}  // namespace workspace
