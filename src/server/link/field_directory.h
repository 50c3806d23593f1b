#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "server/context/letter_fields.h"

namespace server {

/// Looks up in the server's data which fields letters have. Stays on the thread that made it.
class FieldDirectory {
 public:
  /// Throws Failure kNotFound where there are no data yet, kUnavailable or kRefused where they cannot be
  /// used.
  explicit FieldDirectory(const std::filesystem::path& data_folder);
  ~FieldDirectory();

  /// The fields of a letter type in their order; empty where there is no such letter type. Throws as
  /// FindLetterFields.
  std::vector<LetterField> Find(const std::string& letter_type);

 private:
  std::unique_ptr<Database> database_;
};

}  // namespace server
