#include "server/link/field_directory.h"

#include "server/schema/schema.h"
#include "server/storage/server_folders.h"

namespace server {

FieldDirectory::FieldDirectory(const std::filesystem::path& data_folder)
    : database_(std::make_unique<Database>(DatabaseFile(data_folder), Database::Opening::kExisting)) {
  PrepareSchema(*database_);
}

FieldDirectory::~FieldDirectory() = default;

std::vector<LetterField> FieldDirectory::Find(const std::string& letter_type) {
  Transaction transaction(*database_, Transaction::Purpose::kReading);
  auto fields = FindLetterFields(*database_, letter_type);
  transaction.Commit();
  return fields;
}

}  // namespace server
