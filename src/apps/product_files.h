#pragma once

#include <filesystem>
#include <string>

namespace apps {

/// The tables and templates that offices are made with (reference/, server/, templates/): the folder that the
/// environment variable ZEMLO_TABLES names, else the one beside the installed program in
/// ../share/zemlo-correspondence, else the one in the source folder it was built from.
/// Throws Failure kNotFound where there is none, and where the variable names a folder without templates.
std::filesystem::path ProductDataFolder();

/// What a program answers to --version, with a line break at its end: itself, and which tables it reads.
std::string VersionText(const std::string& program);

}  // namespace apps
