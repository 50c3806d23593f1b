#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace lok {
class Office;
}

namespace wordprocessor {

/// The office inside the layout process. One a process, one thread.
class OfficeSession {
 public:
  /// The office's program folder: what ZEMLO_OFFICE_FOLDER names, else the first of the usual places that
  /// exists. Throws std::runtime_error with a sentence for the person where there is none.
  static std::filesystem::path FindProgramFolder();

  /// Starts the office with the profile in `profile`, made beforehand. Throws std::runtime_error.
  OfficeSession(const std::filesystem::path& program_folder, const std::filesystem::path& profile);
  OfficeSession(const OfficeSession&) = delete;
  OfficeSession& operator=(const OfficeSession&) = delete;
  ~OfficeSession();

  /// Lays out a text document. Throws std::runtime_error, and leaves no PDF then.
  void Layout(const std::filesystem::path& document, const std::filesystem::path& pdf);

  /// Whether a document has brought typefaces of its own, which this office would use for all others too.
  bool HasForeignTypefaces() const;

 private:
  std::string LastError();

  const std::filesystem::path foreign_typefaces_;
  std::unique_ptr<lok::Office> office_;
};

}  // namespace wordprocessor
