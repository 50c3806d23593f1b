#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/data_folder.h"
#include "host/ini_file.h"
#include "platform/parties/user_rights.h"

namespace host {

/// What the office has set for everybody: server.ini of the data folder, read once. docs/operations.md
/// describes it. Users and rights are found without regard to case.
///
/// A value that is wrong counts as not set, and is named in faults(). Where the file is missing nobody holds
/// a right.
class ServerSettings : public platform::UserRights {
 public:
  /// Throws Failure kPermissionDenied where the file may not be read, kDamaged where it is not written in
  /// UTF-8.
  explicit ServerSettings(const DataFolder& folder);

  /// Writes the first settings with an explanation of each, unless there are settings already.
  static void CreateFor(const DataFolder& folder);

  /// What is wrong in the file, a sentence or two each with the file and the line, in the order of the file.
  const std::vector<std::string>& faults() const { return faults_; }

  /// Those of the user's own line; without one those of the line "*".
  bool Holds(std::string_view user_id, std::string_view right) const override;

  /// The program that verifies addresses, an absolute path; empty where the street file does.
  const std::filesystem::path& AddressProgram() const { return address_program_; }
  /// How long that program may take for an address.
  std::chrono::seconds AddressTimeOut() const { return address_time_out_; }

 private:
  void Complain(std::size_t line, const std::string& what);
  void Take(const IniFile::Entry& entry);
  void TakeRights(const IniFile::Entry& entry);
  void TakeAddressVerification(const IniFile::Entry& entry);

  const DataFolder folder_;
  std::map<std::string, std::set<std::string>> rights_;  // by user, all in upper case
  std::filesystem::path address_program_;
  std::chrono::seconds address_time_out_{5};
  std::vector<std::string> faults_;
};

}  // namespace host
