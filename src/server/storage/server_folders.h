#pragma once

#include <filesystem>

/// Where the server's own things lie in a data folder. The paths are absolute and normal.
namespace server {

/// <data>/server.
std::filesystem::path ServerFolder(const std::filesystem::path& data_folder);
/// <data>/server/server.db.
std::filesystem::path DatabaseFile(const std::filesystem::path& data_folder);
/// <data>/server/templates, from which templates are downloaded.
std::filesystem::path TemplateFolder(const std::filesystem::path& data_folder);
/// <data>/server/batch_rules.tsv, what the night writes unasked.
std::filesystem::path RuleFile(const std::filesystem::path& data_folder);
/// <data>/batches, where the letters of each run lie.
std::filesystem::path BatchFolder(const std::filesystem::path& data_folder);
/// <data>/server/streets, what the post delivers to.
std::filesystem::path StreetFolder(const std::filesystem::path& data_folder);

}  // namespace server
