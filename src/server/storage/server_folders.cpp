#include "server/storage/server_folders.h"

namespace server {

std::filesystem::path ServerFolder(const std::filesystem::path& data_folder) {
  return (std::filesystem::absolute(data_folder) / "server").lexically_normal();
}

std::filesystem::path DatabaseFile(const std::filesystem::path& data_folder) {
  return ServerFolder(data_folder) / "server.db";
}

std::filesystem::path TemplateFolder(const std::filesystem::path& data_folder) {
  return ServerFolder(data_folder) / "templates";
}

std::filesystem::path StreetFolder(const std::filesystem::path& data_folder) {
  return ServerFolder(data_folder) / "streets";
}

std::filesystem::path RuleFile(const std::filesystem::path& data_folder) {
  return ServerFolder(data_folder) / "batch_rules.tsv";
}

std::filesystem::path BatchFolder(const std::filesystem::path& data_folder) {
  return ServerFolder(data_folder).parent_path() / "batches";
}

}  // namespace server
