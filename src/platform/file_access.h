#pragma once

#include <filesystem>
#include <string>

/// Who may use what the programs write: letters, notes, logs and databases hold personal data.
///
/// A file or folder is for its owner, and for the group of the folder it lies in where the administrator
/// shares that folder with its group; for nobody else, whatever the umask is. What a program makes as root
/// belongs to the owner of the folder it lies in, who can go on with it. Decision [file-access].
namespace platform {

/// Whether the folder is shared with its group: its group may write there and new files get the group
/// (set-group-id bit), as `zemlo-letters init --group` leaves it.
bool IsShared(const std::filesystem::path& folder);

/// Whether there is something of that name, or a link to it. Throws FileFailure where this program may not
/// look.
bool IsThere(const std::filesystem::path& path);

enum class Use { kReading, kWriting };

/// 0 where this program may use the file or folder in that way; else the operating system's error number.
int WhyNot(Use use, const std::filesystem::path& path);

/// Whose it is: the account's name, or its number where it has none; "?" where nobody can say.
std::string OwnerOf(const std::filesystem::path& path);
/// The account this program runs under.
std::string OwnAccount();

/// Makes the file and opens it for reading and writing. Returns the descriptor, which the caller closes; -1
/// with errno set where it cannot, EEXIST where there is one.
int OpenNewFile(const std::filesystem::path& file);

/// Makes an empty file where there is none, for a library that then fills it. Throws FileFailure naming it.
void MakeFile(const std::filesystem::path& file);

/// Gives a file that a library has made for this program the permissions it would have from OpenNewFile.
/// Another user's keeps its own, as does one on a file system that knows no permissions.
void Protect(const std::filesystem::path& file) noexcept;

/// Makes the folder and those above it that are missing. Throws FolderFailure naming the folder.
void MakeFolder(const std::filesystem::path& folder);

}  // namespace platform
