#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/parties/print_component.h"
#include "wordprocessor/printing/session.h"

namespace wordprocessor {

/// The print component of this system: templates are WordprocessingML files, pages are laid out by the office
/// in a process of its own.
///
/// A preview is laid out in the background and opens from the event loop; when that fails, the failure is
/// reported under "ZEMLO_Print.ShowPreview" and DocEnd is raised. Printing and saving from the preview report
/// under "ZEMLO_Print.PrintOut" and "ZEMLO_Print.SaveToFile". Documents and templates are opened from the
/// template folder only, but for one that is tried.
class OfficePrintComponent : public platform::PrintComponent {
 public:
  /// What the user's settings say of printing.
  struct Printing {
    std::string printer = {};  ///< one of the printers' names, or "" for their default
    bool without_asking = false;
  };
  OfficePrintComponent(const PrintSurroundings& outside, std::filesystem::path template_folder,
                       Printing printing);

  /// The document may outlive the component, not what the component was made with.
  std::unique_ptr<platform::PrintDocument> NewDocument() override;
  bool AskHow(std::size_t letters) override;

  /// This file is opened as well, wherever it lies: an author wants to look at it.
  void OpenTriedTemplate(const std::filesystem::path& file) { shop_->tried_template = file.string(); }

  /// Whether a preview is still to open: from ShowPreview until its window is there or its failure reported.
  bool HasWorkUnderWay() const { return shop_->under_way > 0; }

 private:
  const std::shared_ptr<PrintShop> shop_;
};

}  // namespace wordprocessor
