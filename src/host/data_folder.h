#pragma once

#include <filesystem>
#include <string>

namespace host {

/// Where everything of one user lies: settings, reference database, templates, the server's data, prints.
///
///     office.txt            what the folder is: the mark that `init` leaves
///     settings.ini          what the office has set for this user
///     server.ini            what the office has set for everybody
///     reference.db          code tables, letter definitions, template versions
///     templates/            the local copies of the letter templates
///     server/               the application server's database and its template folder
///     printed/              letters printed to the PDF folder
///     unrecorded/           letters that were printed and are not recorded yet
///     config/               the workspace's own files
///     work/                 documents under way; empty when no program runs
///     error.log             what went wrong, one entry a line
class DataFolder {
 public:
  explicit DataFolder(std::filesystem::path root) : root_(std::move(root)) {}

  /// The user's own data folder: $XDG_DATA_HOME, else the home directory (from $HOME, else from the account).
  /// Throws Failure kNotFound where there is neither; the message says to name a folder with --data.
  static DataFolder OfUser();

  const std::filesystem::path& root() const { return root_; }
  std::filesystem::path Mark() const { return root_ / "office.txt"; }
  std::filesystem::path Settings() const { return root_ / "settings.ini"; }
  std::filesystem::path ServerSettings() const { return root_ / "server.ini"; }
  std::filesystem::path ReferenceDatabase() const { return root_ / "reference.db"; }
  std::filesystem::path Templates() const { return root_ / "templates"; }
  std::filesystem::path Printed() const { return root_ / "printed"; }
  std::filesystem::path Unrecorded() const { return root_ / "unrecorded"; }
  std::filesystem::path Config() const { return root_ / "config"; }
  std::filesystem::path Work() const { return root_ / "work"; }
  std::filesystem::path ErrorLog() const { return root_ / "error.log"; }

  /// Makes the folders that are missing. Throws FileFailure naming the folder.
  void Create() const;
  /// Whether there is nothing yet, neither an office nor anything else: no folder, or an empty one. What a
  /// new disk brings along does not count.
  bool IsNew() const;
  /// Whether `init` has been here. Throws FileFailure where this program may not look.
  bool IsPrepared() const;

 private:
  std::filesystem::path root_;
};

}  // namespace host
