#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

/// Files that are there whole or not at all, readable to whom platform/file_access.h says. Every function
/// throws Failure naming file and folder and saying what to do: kNotFound, kPermissionDenied, or kUnavailable
/// where the file system is full or broken.
namespace platform {

std::string ReadWholeFile(const std::filesystem::path& file);

/// Writes `content` under a name of its own, makes it last (fsync), and only then gives it its name; what was
/// there under that name is replaced. A device or a pipe is written into, here and wherever a file is
/// replaced: whoever may replace one would take it from everybody.
void WriteWholeFile(const std::filesystem::path& file, std::string_view content);

/// Like WriteWholeFile for what can be made again: a power cut may take it.
void ReplaceFile(const std::filesystem::path& file, std::string_view content);

/// Writes `content` for this program's own use, into a folder of its own: nothing of the above is needed
/// there.
void WriteScratchFile(const std::filesystem::path& file, std::string_view content);

/// Writes `content` like WriteWholeFile, but never replaces a file: false when the name is taken, also by
/// another program at the same moment.
bool WriteNewFile(const std::filesystem::path& file, std::string_view content);

/// Gives a file another name, replacing what was there; copies it where the two lie on different file
/// systems.
void MoveWholeFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Throws Failure where `content`, the file of that name, must not be handed out.
using ContentCheck = std::function<void(const std::string& content, const std::string& file_name)>;

/// Copies a file like WriteWholeFile, replacing what was there. Throws what `check` throws, too.
void CopyWholeFile(const std::filesystem::path& from, const std::filesystem::path& to,
                   const ContentCheck& check = {});

/// Removes what programs that were killed left half written in `folder`. Files that another program is
/// writing at the moment stay, as do those on a file system without locks. Never throws.
void RemoveUnfinishedFiles(const std::filesystem::path& folder) noexcept;

}  // namespace platform
