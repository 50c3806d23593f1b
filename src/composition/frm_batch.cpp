#include "composition/frm_batch.h"

#include <any>
#include <utility>

#include "composition/unreadable_message.h"
#include "platform/agreed/field_attributes.h"
#include "platform/text.h"
#include "workspace/messaging/at_exit.h"
#include "workspace/messaging/diagnostic_mode.h"

namespace composition {
namespace {

using platform::Failure;
using platform::Trap;
using platform::Tree;
using platform::XmlElement;

constexpr const char* kLoad = "frmBatch.Form_Load";
constexpr int kTreeWidthWithoutFrame = 9888;  // twips
constexpr int kMostProblems = 100;            // the tree has them all

namespace field_attribute = platform::field_attribute;

/// Which attribute of the element fills which label of the frame.
struct Explanation {
  platform::Label frmBatch::*label;
  std::string_view attribute;
};
constexpr auto kExplanations = std::to_array<Explanation>({
    {&frmBatch::bookmark_type, field_attribute::kExplainedType},
    {&frmBatch::bookmark_raw_value, field_attribute::kRawValue},
    {&frmBatch::bookmark_state, field_attribute::kExplainedState},
    {&frmBatch::bookmark_attribute, field_attribute::kExplainedAttributes},
    {&frmBatch::bookmark_error, field_attribute::kExplainedErrors},
});

}  // namespace

frmBatch::frmBatch(const platform::Services& services) : Form("Letter Information"), services_(services) {
  tvw.images = {{kCorrect, "correct"}, {kErrorInChild, "error further down"}, {kError, "error"}};
  batch_error.SetVisible(false);
  connections_.push_back(tvw.NodeClick.Connect([this](const Tree::Node& node) { tvw_NodeClick(node); }));
  connections_.push_back(cmdOk.Click.Connect([this] { Close(); }));
}

void frmBatch::ErrBookMark(std::string context) {
  Trap(services_, "frmBatch.ErrBookMark", [&] { err_book_mark_ = std::move(context); });
}

void frmBatch::SetText(platform::Label& label, std::string_view text) {
  label.SetCaption(platform::ReplaceAll(text, "&", "&&"));
}

void frmBatch::ShowBatchError(const std::string& text) {
  SetText(batch_error, text);
  batch_error.SetVisible(true);
}

void frmBatch::OnLoad() {
  const workspace::AtExit pointer(
      services_, kLoad, [this] { services_.host.SetMousePointer(platform::MousePointer::kNormal); });
  Trap(services_, kLoad, [&] {
    SetMode();
    FillTree();
    if (tvw.IsEmpty()) throw Failure(Failure::Kind::kNotFound, "There is nothing to show: " + WhyEmpty());
    FillLabels();
  });
}

void frmBatch::SetMode() {
  is_diagnostic_ = workspace::IsDiagnosticMode(services_.settings_store);
  bookmark_information.SetVisible(is_diagnostic_);
  if (!is_diagnostic_) tvw.width = kTreeWidthWithoutFrame;
}

void frmBatch::FillTree() {
  auto parsed = platform::XmlDocument::Parse(err_book_mark_);
  if (!parsed.document) ReportUnreadable(services_, err_book_mark_, kLoad, kLoad);
  auto document = std::move(parsed).OrFail();  // fails with the reason and its place
  const Tree::Edit edit(tvw);
  tvw.Clear();
  document_ = std::move(document);
  errors_ = 0;
  problems_.clear();
  const auto root = document_->Root();
  state_.InitFromNode(root);
  AddNode(root, nullptr);
}

std::string frmBatch::WhyEmpty() const {
  ZEMLO_NodeState root;
  root.InitFromNode(document_->Root());
  return root.IsErroneous() ? "the fields in error are none that this form shows."
                            : "no field of the letter is in error.";
}

void frmBatch::AddNode(const XmlElement& element, Tree::Node* parent) {
  Trap(services_, "frmBatch.AddNode", [&] {
    state_.InitFromNode(element);
    auto* const node = IsShown() ? &tvw.Add(parent, NodeOf(element)) : nullptr;
    for (const auto& child : element.Children()) AddNode(child, node);
  });
}

bool frmBatch::IsShown() const {
  if (is_diagnostic_) return true;
  if (state_.IsIndirectRef() || state_.IsSysType()) return false;
  return state_.IsSelfErroneous() || state_.ErrInChild();
}

Tree::Node frmBatch::NodeOf(const XmlElement& element) {
  Tree::Node node{.text = element.Attribute(field_attribute::kDescription).value_or(element.Name()),
                  .expanded = true,
                  .tag = element};
  if (!state_.IsErroneous()) {
    node.image = kCorrect;
  } else if (state_.ErrInChild()) {
    node.image = kErrorInChild;
  } else if (state_.IsSelfErroneous()) {
    node.image = kError;
    node.colour = platform::kRed;
    CountError(node.text, element);
  }
  return node;
}

void frmBatch::CountError(const std::string& field, const XmlElement& element) {
  const bool is_counted = errors_.Increment();
  if (is_counted && errors_.value() <= kMostProblems) {
    const auto explained = element.Attribute(field_attribute::kExplainedErrors).value_or("");
    if (!problems_.empty()) problems_ += '\n';
    problems_ += field + ": " + (explained.empty() ? "The value is in error." : explained);
  }
  if (is_counted || errors_overflowed_) return;
  errors_overflowed_ = true;
  services_.errors.ReportError("The number of errors stays at \"" + std::to_string(errors_.value()) +
                                   "\", the most that can be counted; there are more.",
                               platform::kComponentTitle, "frmBatch.AddNode");
}

void frmBatch::FillLabels() {
  SetText(account, AccountText());
  SetText(address_status, document_->Root().Attribute(field_attribute::kExplainedAddress).value_or(""));
  error_count.SetCaption(std::to_string(errors_.value()));
  SetText(verdict, Verdict());
  SetText(problems, problems_);
}

std::string frmBatch::Verdict() const {
  const int count = errors_.value();
  if (count == 0) return is_refused ? "The letter was refused." : "";
  const auto fields = std::to_string(count) + (count == 1 ? " field" : " fields");
  const std::string are = count == 1 ? " is in error." : " are in error.";
  if (!is_refused) return fields + " of the letter" + are;
  return "The letter was refused: " + fields + are + " Have the data put right, then create it again.";
}

std::string frmBatch::AccountText() const {
  auto text = document_->FirstByTagName("FORM_NBR").Text();
  if (const auto type = document_->FirstByTagName("FORM_TYP_CD")) {
    text += " " + services_.utilities.GetCodeDescription("REFDOCTYP", type.Text());
  }
  return text;
}

void frmBatch::tvw_NodeClick(const Tree::Node& node) {
  RunHandler([&] {
    Trap(services_, "frmBatch.tvw_NodeClick", [&] {
      for (const auto& line : kBookmarkInformation) (this->*line.label).SetCaption("");
      const auto& element = std::any_cast<const XmlElement&>(node.tag);
      SetText(bookmark_name, element.Name());
      SetText(bookmark_value, element.Text());
      for (const auto& [label, attribute] : kExplanations) {
        SetText(this->*label, element.Attribute(attribute).value_or(""));
      }
    });
  });
}

}  // namespace composition
