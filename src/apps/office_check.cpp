#include "apps/office_check.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "apps/checked_templates.h"
#include "apps/product_files.h"
#include "apps/template_faults.h"
#include "apps/unfetched_versions.h"
#include "host/disk_files.h"
#include "platform/agreed/template_versions.h"
#include "platform/failure.h"
#include "platform/tab_table.h"
#include "platform/text.h"
#include "reference/sql_dialect.h"
#include "reference/table_check.h"
#include "server/storage/server_folders.h"
#include "wordprocessor/authoring/typefaces.h"
#include "wordprocessor/document/template_file.h"
#include "wordprocessor/printing/printer_queues.h"
#include "wordprocessor/printing/printers.h"

namespace apps {
namespace {

namespace fs = std::filesystem;
using platform::Failure;

std::string Named(const fs::path& path) {
  return platform::Quoted(path.string());
}

std::string Listed(const std::set<std::string>& names) {
  std::string list;
  for (const auto& name : names) list += (list.empty() ? "\"" : ", \"") + name + "\"";
  return list;
}

/// The file that the catalogue is made from, and where in it each document stands.
class CatalogueFile {
 public:
  CatalogueFile() {
    try {
      const auto table = platform::TabTable::Read(reference::TableFile(ProductDataFolder(), "templates.tsv"));
      for (std::size_t row = 0; row < table.RowCount(); ++row)
        places_.emplace(table.Text(row, "DCMT_NM"), table.Place(row, "DCMT_NM"));
    } catch (const Failure&) {
      // The catalogue itself is in the reference database; without its file the lines have no numbers.
    }
  }

  std::string PlaceOf(const std::string& document) const {
    const auto place = places_.find(document);
    return place == places_.end() ? "The template catalogue" : place->second;
  }

 private:
  std::map<std::string, std::string> places_;
};

class OfficeCheck {
 public:
  OfficeCheck(const host::DataFolder& folder, const host::SettingsFile& settings,
              platform::ReferenceDatabase& reference)
      : data_folder_(folder.root()),
        settings_file_(folder.Settings()),
        settings_(settings),
        reference_(reference),
        template_folder_(server::TemplateFolder(folder.root())),
        region_(platform::UpperCase(platform::Trim(settings.Region()))) {}

  std::vector<std::string> Run(Occasion occasion) && {
    faults_ = settings_.faults();
    CheckPrinting();
    CheckRegion();
    const auto documents = CheckCatalogue();
    if (occasion == Occasion::kInit) {
      std::ranges::move(VersionsNobodyFetches(reference_, region_), std::back_inserter(faults_));
      CheckTemplates();
    }
    CheckCorrections(occasion, documents);
    CheckTypefaces(occasion == Occasion::kInit ? documents : std::set<std::string>());
    return std::move(faults_);
  }

 private:
  void CheckPrinting() {
    const auto folder = settings_.PdfFolder();
    std::error_code unknown;
    const auto status = fs::status(folder, unknown);
    if (fs::exists(status) && !fs::is_directory(status)) {
      faults_.push_back(Named(settings_file_) + ": [Folders] Printed " + Named(folder) +
                        " is a file and no folder, so that no letter can be filed there. Name a folder.");
    }
    const auto printer = settings_.Printer();
    // Asking the spooler may take a while: where nothing is set, nobody does before the first letter.
    if (printer.empty() || printer == wordprocessor::Printers::kPdfFolder) return;
    const auto queues = wordprocessor::CupsQueues().Names();
    if (std::ranges::find(queues, printer) != queues.end()) return;
    faults_.push_back(
        Named(settings_file_) + ": [Printing] Printer \"" + printer +
        "\" is no print queue of this machine, so that no letter can be printed there. " +
        (queues.empty() ? "The spooler names none" : "There is " + Listed({queues.begin(), queues.end()})) +
        "; \"PDF folder\" files letters instead.");
  }

  void CheckRegion() {
    std::set<std::string> regions;
    const auto rows = reference_.Select("SELECT DISTINCT REGION FROM FLS_LETTER");
    for (std::size_t row = 0; row < rows->RecordCount(); ++row)
      regions.insert(platform::UpperCase(rows->Text(row, "REGION")));
    if (regions.contains(region_)) return;
    faults_.push_back(
        Named(settings_file_) + ": [User] Region " +
        (region_.empty() ? "is not set" : "\"" + region_ + "\" is no region of the reference database") +
        ", so that no letter type is offered. The database has " + Listed(regions) + ".");
  }

  /// Returns the documents that are there.
  std::set<std::string> CheckCatalogue() {
    const CatalogueFile file;
    std::set<std::string> documents;
    const auto rows =
        reference_.Select("SELECT LTR_TYP_ID, DCMT_NM, EFCTV_DT FROM FLS_LTR_TEMPLATE WHERE REGION = " +
                          reference::SqlQuoted(region_) + " ORDER BY LTR_TYP_ID, EFCTV_DT");
    for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
      const std::string document(platform::Trim(rows->Text(row, "DCMT_NM")));
      if (const auto file_there = host::FindFile((template_folder_ / document).string())) {
        documents.insert(file_there->filename().string());
        continue;
      }
      faults_.push_back(file.PlaceOf(document) + ": The template \"" + document + "\" for letter type \"" +
                        rows->Text(row, "LTR_TYP_ID") + "\" from " + rows->Text(row, "EFCTV_DT") +
                        " on is not in " + Named(template_folder_) +
                        ". Put it there; until then no letter can be made with it, or printed again.");
    }
    return documents;
  }

  void CheckTypefaces(std::set<std::string> documents) {
    documents.insert(platform::kCommonTemplate);
    std::map<std::string, std::string> faults;  // by typeface, about the first document that names it
    for (const auto& document : documents) {
      for (const auto& use : TypefacesOrNone(template_folder_ / document)) {
        if (use.same_widths) continue;
        faults.emplace(use.name, "The typeface \"" + use.name + "\" of \"" + document + "\" " +
                                     wordprocessor::WhatBecomesOf(use) + ". Install it.");
      }
    }
    for (auto& [name, fault] : faults) faults_.push_back(std::move(fault));
  }

  /// A template that cannot be read is named when a letter needs it.
  static std::vector<wordprocessor::TypefaceUse> TypefacesOrNone(const fs::path& file) {
    try {
      return wordprocessor::TypefacesOf(wordprocessor::DocxDocument::Open(file));
    } catch (const Failure&) {
      return {};
    }
  }

  /// Those that make letters, or will.
  void CheckTemplates() {
    const auto rows = reference_.Select(
        "SELECT LTR_TYP_ID, DCMT_NM FROM FLS_LTR_TEMPLATE WHERE REGION = " + reference::SqlQuoted(region_) +
        " AND (EXPRTN_DT IS NULL OR EXPRTN_DT >= date()) ORDER BY LTR_TYP_ID, EFCTV_DT");
    CheckedTemplates check(data_folder_);
    for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
      const std::string document(platform::Trim(rows->Text(row, "DCMT_NM")));
      auto fault = check.FaultOf((template_folder_ / document).string(), rows->Text(row, "LTR_TYP_ID"));
      if (!fault.empty())
        faults_.push_back("No letter of type \"" + rows->Text(row, "LTR_TYP_ID") + "\" is made with \"" +
                          document + "\". " + fault);
    }
  }

  void CheckCorrections(Occasion occasion, const std::set<std::string>& documents) {
    if (occasion == Occasion::kInit)
      CheckRoad({ProductDataFolder() / "templates", template_folder_, "the next init"}, documents);
    CheckRoad({template_folder_, settings_.TemplateFolder(), "the next start"}, documents);
  }
  void CheckRoad(const TemplateRoad& road, const std::set<std::string>& documents) {
    std::ranges::move(CorrectionsUnderOldNames(road, documents), std::back_inserter(faults_));
  }

  const fs::path data_folder_;
  const fs::path settings_file_;
  const host::SettingsFile& settings_;
  platform::ReferenceDatabase& reference_;
  const fs::path template_folder_;
  const std::string region_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> CheckOffice(const host::DataFolder& folder, const host::SettingsFile& settings,
                                     platform::ReferenceDatabase& reference, Occasion occasion) {
  try {
    return OfficeCheck(folder, settings, reference).Run(occasion);
  } catch (const Failure&) {
    return settings.faults();
  }
}

}  // namespace apps
