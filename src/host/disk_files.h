#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/parties/file_system.h"

namespace host {

/// The files of this machine.
class DiskFiles : public platform::FileSystem {
 public:
  bool Exists(const std::string& path) const override;
  void CopyFile(const std::string& from, const std::string& to) override;
  bool DeleteFile(const std::string& path) override;
};

/// `path` with "\" turned into the separator of this machine. Template folders come from the server with "\".
std::filesystem::path LocalPath(const std::string& path);

/// The file as it is really named: `path` itself, else the one file of its folder whose name differs from it
/// in case only; nothing when there is none.
std::optional<std::filesystem::path> FindFile(const std::string& path);

}  // namespace host
