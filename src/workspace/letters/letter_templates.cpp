#include "workspace/letters/letter_templates.h"

#include <utility>

#include "platform/agreed/letter_types.h"
#include "platform/agreed/requests.h"
#include "platform/agreed/template_versions.h"
#include "platform/identity.h"
#include "platform/parties/request_record.h"
#include "platform/text.h"
#include "platform/xml/xml.h"
#include "workspace/letters/statements.h"

namespace workspace {

namespace {

using platform::Failure;
using platform::ReplaceAll;
using platform::Trap;
using platform::Trim;

constexpr std::string_view kFolderProcedure = "ZEMLO_Corresp.DecodeNetworkPath";
constexpr std::string_view kCopyProcedure = "ZEMLO_Corresp.CopyTemplate";

// Names come from catalogue and history rows: none of them may lead out of the template folder.
std::string_view PlainName(std::string_view name) {
  const bool is_plain = !name.empty() && name.find_first_of("/\\:") == std::string_view::npos;
  if (is_plain && name != "." && name != "..") return name;
  throw Failure(Failure::Kind::kRefused,
                "The template name \"" + std::string(name) +
                    "\" is no plain file name. Correct it in the template catalogue.");
}

/// When the version in the row is in force, seen from `today`.
std::string WhenInForce(const platform::RecordSet& versions, std::size_t row, const std::string& today) {
  const auto first = versions.Text(row, "EFCTV_DT");
  const auto last = versions.Text(row, "EXPRTN_DT");
  const auto days = last.empty() ? "from " + first + " on" : "from " + first + " to " + last;
  return (!last.empty() && last < today ? " was valid " : " is valid ") + days;
}

template <typename Step>
void PassOverMissingFile(Step&& step) {
  try {
    step();
  } catch (const Failure& failure) {
    if (failure.kind() != Failure::Kind::kNotFound) throw;
  }
}

}  // namespace

void LetterTemplates::GetNetworkPath() {
  Trap(services_, "ZEMLO_Corresp.GetNetworkPath", [&] {
    envelope_.Send({.type = platform::message_type::kFetch,
                    .name = "GetNetworkPath",
                    .with_user_id = false,
                    .inquiry_xml = platform::kTemplateFolderInquiry,
                    .status = "Requesting Network Path."});
  });
}

void LetterTemplates::DecodeNetworkPath(const Reply& reply) {
  Trap(services_, kFolderProcedure, [&] { ReadServerFolder(reply); });
}

void LetterTemplates::ReadServerFolder(const Reply& reply) {
  const auto context = RowsOf(services_, reply, platform::record_name::kContext);
  const auto parsed = platform::XmlDocument::Parse(context ? context->FirstText() : "");
  if (!parsed.document) {
    const auto report = [this](const std::string& text) {
      services_.errors.ReportError(text, platform::kComponentTitle, kFolderProcedure);
    };
    report("Message parsing error");
    report("Message; " + parsed.error.reason);
    return;
  }
  const auto element = parsed.document->FirstByTagName(platform::kTemplateFolderElement);
  if (!element) throw Failure(Failure::Kind::kDamaged, "The server's reply names no template folder.");
  std::string folder(Trim(element.Text()));
  if (!folder.ends_with('\\')) folder += '\\';
  server_folder_ = std::move(folder);
}

void LetterTemplates::CopyTemplate() {
  bool started = false;
  const bool all_visited = Trap(services_, kCopyProcedure, [&] {
    const auto rows = Catalogue(kAllTemplates);
    services_.host.SetMousePointer(platform::MousePointer::kHourglass);
    for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
      services_.status.ShowStatus("Checking templates.");
      const std::string name(Trim(rows->Text(row, "DCMT_NM")));
      // A name that is wrong in the catalogue is no reason to go without the other templates.
      if (!Trap(services_, kCopyProcedure, [&] { PlainName(name); }) || !DownloadWhereMissing(name)) continue;
      started = true;
      auto& awaited = awaited_[ServerPath(name)];
      awaited.name = name;
      awaited.letter_types.emplace(Trim(rows->Text(row, "LTR_TYP_ID")));
    }
  });
  // Every letter needs it; it is no version of a letter type, so the catalogue does not name it.
  Trap(services_, kCopyProcedure, [&] { started |= DownloadWhereMissing(platform::kCommonTemplate); });
  if (!started || !all_visited) services_.status.ShowStatus("Ready");
}

bool LetterTemplates::DownloadWhereMissing(const std::string& name) {
  bool is_here = false;
  PassOverMissingFile([&] { is_here = services_.files.Exists(LocalPath(name)); });
  if (is_here) return false;
  bool is_started = false;
  PassOverMissingFile([&] {
    listener_.DownloadFile(ServerPath(name), services_.settings.TemplateFolder(), 0);
    services_.status.ShowStatus("Downloading templates.");
    is_started = true;
  });
  return is_started;
}

void LetterTemplates::TemplateCame(const std::string& source) {
  const auto came = awaited_.extract(source);
  if (came.empty()) return;
  for (const auto& letter_type : came.mapped().letter_types) {
    const auto fault = services_.template_judge.FaultOf(LocalPath(came.mapped().name), letter_type);
    if (!fault.empty()) services_.errors.ReportError(fault, platform::kComponentTitle, kCopyProcedure);
  }
}

std::string LetterTemplates::GetTemplateFileName(std::int32_t letter_type) {
  std::string path;
  Trap(services_, "ZEMLO_Correspndnce.GetTemplateFileName", [&] {  // spelt so as given
    const auto rows = Catalogue(kTemplateOfToday, std::to_string(letter_type));
    if (rows->IsEmpty()) return;
    rows->MoveFirst();
    template_name_ = rows->Text("DCMT_NM");
    path = LocalPath(template_name_);
  });
  return path;
}

TemplateInForce LetterTemplates::InForce(std::int32_t letter_type) {
  const auto code = std::to_string(letter_type);
  const auto path = GetTemplateFileName(letter_type);
  if (path.empty()) return {.fault = WhyNoTemplate(code)};
  TemplateInForce found{.name = template_name_, .path = path};
  if (services_.files.Exists(path)) {
    found.fault = services_.template_judge.FaultOf(path, code);
  } else {
    found.fault = "The template file " + platform::Quoted(path) + " is missing";
    found.fault += IsFetched(found.name)
                       ? ". Start the program again to fetch it, or ask the administrator."
                       : ", and no start fetches it, because the catalogue has a newer version. Ask the "
                         "administrator: \"zemlo-letters init\" says what to enter there.";
  }
  return found;
}

bool LetterTemplates::IsFetched(std::string_view template_name) const {
  try {
    const auto rows = Catalogue(kAllTemplates);
    for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
      if (platform::EqualsIgnoringCase(Trim(rows->Text(row, "DCMT_NM")), Trim(template_name))) return true;
    }
    return false;
  } catch (const Failure&) {
    return true;  // nobody knows better; the next start reports it
  }
}

std::string LetterTemplates::WhyNoTemplate(const std::string& letter_type) const {
  const auto today = platform::DateText(services_.clock.Today());
  const auto subject = "Letter type " + platform::Quoted(letter_type) + " has no template";
  constexpr auto kRemedy = " Ask the administrator for one.";
  try {
    const auto versions = Catalogue(kTemplateVersions, letter_type);
    if (versions->IsEmpty()) {
      const auto type = Catalogue(kLetterType, letter_type);
      return !type->IsEmpty() && type->FirstText() == platform::made_where::kElsewhere
                 ? subject + ": it is made elsewhere."
                 : subject + " in the catalogue." + kRemedy;
    }
    std::string listed;
    for (std::size_t row = 0; row < versions->RecordCount(); ++row) {
      listed += (row == 0 ? ": " : ", ") + platform::Quoted(Trim(versions->Text(row, "DCMT_NM"))) +
                WhenInForce(*versions, row, today);
    }
    return subject + " that is in force on " + today + listed + "." + kRemedy;
  } catch (const Failure&) {
    // The look-up of the template has reported it.
    return subject + " that is in force on " + today + "." + kRemedy;
  }
}

std::shared_ptr<platform::RecordSet> LetterTemplates::Catalogue(std::string_view query,
                                                                std::string_view letter_type) const {
  const auto region = platform::UpperCase(Trim(services_.settings.Region()));
  auto statement = ReplaceAll(query, "{T}", platform::DateText(services_.clock.Today()));
  statement = ReplaceAll(statement, "{L}", "'" + std::string(letter_type) + "'");
  statement = ReplaceAll(statement, "{R}", services_.utilities.SqlQuote(region));

  platform::RequestRecord record(services_.reference);
  record.Source(std::move(statement));
  record.Open();
  return record.Recordset();
}

void LetterTemplates::BringIfMissing(const std::string& template_name) {
  const auto local_path = LocalPath(template_name);
  if (services_.files.Exists(local_path)) return;
  services_.status.ShowReason("The template file \"" + local_path + "\" is missing and will be fetched.");
  services_.host.ShowMessage(
      {"You do not have the correct template for this letter. Template will be downloaded from server.",
       platform::MessageIcon::kExclamation, message_title_});
  services_.files.CopyFile(ServerPath(template_name), local_path);
}

std::string LetterTemplates::LocalPath(std::string_view template_name) const {
  return services_.settings.TemplateFolder() + std::string(PlainName(template_name));
}

std::string LetterTemplates::ServerPath(std::string_view template_name) const {
  return server_folder_ + std::string(PlainName(template_name));
}

}  // namespace workspace
