#include "workspace/document/parts.h"

#include "workspace/document/reply_routes.h"

namespace workspace {

Parts::Parts(const platform::Services& services, WorkspaceData& data, platform::ReplyListener& listener)
    : gate(services, data.state),
      envelope(services, data.state, listener),
      field_check(services, data.pages),
      fields(services, data.pages, data.request, field_check),
      form_types(services, data.state, data.request, data.pages),
      letter_request(
          {services, data.state, data.request, data.customer, data.pages, field_check, form_types}),
      search_check(services, data.state, data.request, data.pages.tracking, field_check),
      history_search({services, data.state, data.request, data.pages, envelope, letter_request,
                      fields.troop_district, search_check}),
      templates(services, data.state, envelope, listener),
      history(services, /*batch_browser=*/nullptr),
      forms(services, data.state),
      generation(
          {services, data.state, data.request, data.letter, data.pages, envelope, templates, history, forms}),
      bookmark_view({services, data.state, data.pages.tracking.sdgGrid, /*batch_browser=*/nullptr, forms}),
      online_actions(services, letter_request, [this] { generation.SelectNewType(); }, /*reprint=*/{}),
      customer_inquiry({services, data.state, envelope, data.customer, data.pages.tracking.panel}),
      customer_selection(services, data.state, data.customer),
      letter_fetch(services, envelope, data.letter, data.pages),
      letter_grid({services, data.action_lists, data.customer, data.pages.tracking, letter_fetch}),
      correspondence_grid(services, data.pages.correspondence),
      row_format(services, data.state, data.pages),
      handlers(Handlers()),
      replies(services, data.state, ReplyRoutes(handlers, data.pages),
              [&data] { data.pages.tracking.letter_action.SetEnabled(true); }),
      downloads(services, data.state) {}

ReplyHandlers Parts::Handlers() {
  ReplyHandlers known;
  known.CreateNewCorrespondence = [this] { generation.CreateNewCorrespondence(); };
  known.DecodeNetworkPath = [this] { templates.DecodeNetworkPath(); };
  known.CopyTemplate = [this] { templates.CopyTemplate(); };
  known.ViewBookMark = [this] { bookmark_view.ViewBookMark(); };
  known.FillHistory = [this](PageIndex page) { history_search.FillHistory(page); };
  known.FillCustFromLetter = [this] { customer_inquiry.FillCustFromLetter(); };
  known.FillCustomerInfo = [this] { customer_inquiry.FillCustomerInfo(); };
  return known;
}

}  // namespace workspace
