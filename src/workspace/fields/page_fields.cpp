#include "workspace/fields/page_fields.h"

#include <iterator>
#include <optional>
#include <utility>

#include "workspace/fields/key_filter.h"

namespace workspace {

namespace {

void Append(std::vector<platform::Connection>& to, std::vector<platform::Connection> added) {
  to.insert(to.end(), std::move_iterator(added.begin()), std::move_iterator(added.end()));
}

}  // namespace

PageFields::PageFields(const platform::Services& services, Pages& pages, SearchFields& search,
                       FieldCheck& field_check)
    : batch_criteria(services, pages.batch, field_check),
      troop_district({services, pages.tracking.txtTD, search.troop, search.district, "ZEMLO_Corresp"}),
      services_(services),
      pages_(pages),
      field_check_(field_check),
      generate_form_number_(services, pages.correspondence, PageIndex::kCorrespondence, field_check),
      search_form_number_(services, pages.tracking, PageIndex::kTracking, field_check) {}

std::vector<platform::Connection> PageFields::Connect() {
  auto connections = generate_form_number_.Connect();
  Append(connections, search_form_number_.Connect());
  Append(connections, troop_district.Connect([this] { field_check_.CheckEdit(PageIndex::kTracking); }));
  connections.push_back(FilterKeys(services_, pages_.tracking.txtBatch,
                                   "ZEMLO_Correspondence.txtBatch_KeyPress",
                                   [this](char32_t key) -> std::optional<char32_t> {
                                     if (!services_.utilities.AllowBatchNumberKey(key)) return std::nullopt;
                                     return key;
                                   }));
  ConnectBatch(connections);
  return connections;
}

void PageFields::ConnectBatch(std::vector<platform::Connection>& connections) {
  auto& page = pages_.batch;
  for (std::size_t option = 0; option < page.OptBatchDate.size(); ++option) {
    connections.push_back(page.OptBatchDate[option].Click.Connect(
        [this, option] { batch_criteria.OptBatchDate_Click(option); }));
  }
  for (auto& option : page.OptBatchStatus) {
    connections.push_back(option.Click.Connect([this] { batch_criteria.OptBatchStatus_Click(); }));
  }
}

}  // namespace workspace
