#include "apps/letters/letter_explanation.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <string>
#include <string_view>

#include "composition/frm_batch.h"
#include "platform/text.h"
#include "platform/xml/xml.h"
#include "workspace/messaging/diagnostic_mode.h"

namespace apps {
namespace {

using composition::frmBatch;

struct Mark {
  std::string_view image;
  std::string_view text;
};
constexpr auto kMarks = std::to_array<Mark>({
    {frmBatch::kCorrect, "[ok]"},
    {frmBatch::kErrorInChild, "[>]"},
    {frmBatch::kError, "[x]"},
});
constexpr std::string_view kNoMark = "[-]";
constexpr std::size_t kIndent = 2;
constexpr std::size_t kCaptionWidth = 20;

std::string_view MarkOf(std::string_view image) {
  for (const auto& mark : kMarks) {
    if (mark.image == image) return mark.text;
  }
  return kNoMark;
}

/// The form as text. It is worked like a window's: a field is clicked to learn what is known of it.
class FormText {
 public:
  FormText(frmBatch& form, std::ostream& out) : form_(form), out_(out) {}

  void Write() {
    out_ << form_.caption() << '\n';
    for (const auto& line : frmBatch::kHeader) WriteLabel(line, kIndent);
    for (auto* node : form_.tvw.top_level()) WriteNode(*node, kIndent);
    for (const auto& image : form_.tvw.images) {
      out_ << std::string(kIndent, ' ') << MarkOf(image.key) << ' ' << image.meaning;
    }
    out_ << std::string(kIndent, ' ') << kNoMark << " error that is no field's own\n";
  }

 private:
  void WriteNode(platform::Tree::Node& node, std::size_t indent) {
    const auto mark = MarkOf(node.image);
    out_ << std::string(indent, ' ') << mark << ' ' << node.text << '\n';
    form_.tvw.UserClicks(node);
    for (const auto& line : frmBatch::kBookmarkInformation) {
      const bool is_error = line.label == &frmBatch::bookmark_error && node.image == frmBatch::kError;
      if (form_.is_diagnostic() || is_error) WriteLabel(line, indent + mark.size() + 1);
    }
    for (auto* child : node.children) WriteNode(*child, indent + kIndent);
  }

  /// Nothing for an empty label; further lines of a text stand below its first one.
  void WriteLabel(const frmBatch::Line& line, std::size_t indent) {
    const auto text = platform::ReplaceAll((form_.*line.label).caption(), "&&", "&");
    if (text.empty()) return;
    std::string caption = line.caption;
    caption.resize(std::max(caption.size(), kCaptionWidth), ' ');
    const auto break_and_indent = '\n' + std::string(indent + caption.size(), ' ');
    const auto lines = platform::ReplaceAll(platform::ReplaceAll(text, "\r", ""), "\n", break_and_indent);
    out_ << std::string(indent, ' ') << caption << lines << '\n';
  }

  frmBatch& form_;
  std::ostream& out_;
};

/// One that cannot be read is in error, too: the form reports why.
bool IsErroneous(const std::string& context) {
  const auto parsed = platform::XmlDocument::Parse(context);
  if (!parsed.document) return true;
  composition::ZEMLO_NodeState root;
  root.InitFromNode(parsed.document->Root());
  return root.IsErroneous();
}

/// "" where the form found none that it shows.
std::string CountOf(const frmBatch& form) {
  const auto& count = form.error_count.caption();
  return count.empty() || count == "0" ? "" : " (" + count + ")";
}

}  // namespace

ErrorNotice::ErrorNotice(HeadlessOffice& office, bool will_explain) {
  office.shell().AnswerFormsWith([this, will_explain](platform::Form& form) {
    auto* information = dynamic_cast<frmBatch*>(&form);
    if (information == nullptr) return false;
    given_ = true;
    std::cerr << "The letter is not made: its data are in error" << CountOf(*information) << "."
              << (will_explain ? "" : " Run the command with --explain to see where.") << '\n';
    information->cmdOk.UserClicks();
    return true;
  });
}

void ExplainLetter(HeadlessOffice& office, std::ostream& out) {
  const auto& context = office.workspace().letter().context;
  const auto& services = office.office().services();
  if (context.empty()) return;
  if (!IsErroneous(context) && !workspace::IsDiagnosticMode(services.settings_store)) {
    out << "No field of the letter is in error.\n";
    return;
  }
  frmBatch form(services);
  form.ErrBookMark(context);
  form.Load();
  FormText(form, out).Write();
}

}  // namespace apps
