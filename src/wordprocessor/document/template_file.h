#pragma once

#include <filesystem>
#include <string>

/// Where templates are found. Names come from data and from the catalogue: "\" separates folders too, and the
/// last part is found without regard to case.
namespace wordprocessor {

/// The file that `name`, a path in `folder`, means. Throws Failure: kRefused for one that lies anywhere else
/// or names a drive, kNotFound where there is no such file.
std::filesystem::path TemplateFile(const std::filesystem::path& folder, const std::string& name);

/// The common template in the folder of `letter`; empty where there is none, and for the common template
/// itself.
std::filesystem::path CommonTemplateBeside(const std::filesystem::path& letter);

}  // namespace wordprocessor
