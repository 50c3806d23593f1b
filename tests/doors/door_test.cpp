#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A line of src/doors.txt: a folder, and the folders and outside libraries whose headers its files may
/// include.
struct Door {
  std::string folder;
  std::vector<std::string> folders;
  std::vector<std::string> libraries;
};

std::vector<std::string> Words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

std::vector<Door> ReadDoors() {
  std::ifstream file(ZEMLO_SOURCE_DIR "/src/doors.txt");
  std::vector<Door> doors;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    const auto first = line.find(':');
    const auto second = line.find(':', first + 1);
    EXPECT_NE(second, std::string::npos) << line;
    if (second == std::string::npos) continue;
    doors.push_back({Words(line.substr(0, first)).at(0), Words(line.substr(first + 1, second - first - 1)),
                     Words(line.substr(second + 1))});
  }
  return doors;
}

const std::vector<Door>& Doors() {
  static const auto doors = ReadDoors();
  return doors;
}

/// Which headers a library's are: by name, or by the start of it where that ends in "/" or "*".
struct Library {
  std::string_view name;
  std::string_view headers;
};
constexpr auto kLibraries = std::to_array<Library>({
    {"icu", "unicode/"},
    {"pugixml", "pugixml.hpp"},
    {"libzip", "zip.h"},
    {"sqlite", "sqlite3.h"},
    {"zlib", "zlib.h"},
    {"cups", "cups/"},
    {"fontconfig", "fontconfig/"},
    {"qpdf", "qpdf/"},
    {"office", "LibreOfficeKit/"},
    {"posix",
     "sys/ dirent.h dlfcn.h fcntl.h grp.h langinfo.h poll.h pthread.h pwd.h signal.h spawn.h stdlib.h time.h "
     "unistd.h"},
    {"linux", "linux/"},
    {"qt_sql", "QSql*"},
    {"qt_core",
     "QByteArray QCommandLine* QCoreApplication QDate QDateTime QDeadlineTimer QDir QElapsedTimer QEvent "
     "QEventLoop QFile QFileInfo QHash QJson* QList QLocale QLockFile QLoggingCategory QMap QMetaObject "
     "QMetaType QMutex QObject QPointer QProcess QRandomGenerator QRegularExpression QSaveFile QSettings "
     "QStorageInfo "
     "QStandardPaths QString QStringList QStringView QTemporaryDir QTemporaryFile QTextStream QThread QTime "
     "QTimeZone QTimer QUrl QUuid QVariant QtGlobal"},
    {"qt", "Q*"},
});

constexpr auto kNamesThatSayNothing =
    std::to_array<std::string_view>({"utils", "helper", "helpers", "common", "manager"});

bool Lists(std::string_view list, std::string_view name) {
  std::istringstream words{std::string(list)};
  for (std::string word; words >> word;) {
    const bool by_start = word.ends_with('*') || word.ends_with('/');
    if (word.ends_with('*')) word.pop_back();
    if (by_start ? name.starts_with(word) : name == word) return true;
  }
  return false;
}

std::string FolderOf(std::string_view path) {
  return std::string(path.substr(0, std::min(path.rfind('/'), path.size())));
}

/// The doors of the folder that a path from src/ lies in; none where it has no line.
const Door* DoorsOf(std::string_view path) {
  const auto found = std::ranges::find(Doors(), FolderOf(path), &Door::folder);
  return found == Doors().end() ? nullptr : &*found;
}

/// Whether `entry`, "name" or "name/*", means the folder.
bool Means(std::string_view entry, std::string_view folder) {
  if (!entry.ends_with("/*")) return entry == folder;
  entry.remove_suffix(1);
  return (std::string(folder) + "/").starts_with(entry);
}

bool IsStandard(std::string_view header) {
  return header.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_") == std::string_view::npos;
}

bool MayIncludeOutside(const Door& door, bool is_header, std::string_view header) {
  return IsStandard(header) || std::ranges::any_of(kLibraries, [&](const Library& library) {
           const auto opens = [&](const std::string& name) {
             return name == library.name || (!is_header && name == "(" + std::string(library.name) + ")");
           };
           return std::ranges::any_of(door.libraries, opens) && Lists(library.headers, header);
         });
}

bool MayIncludeInside(const Door& door, std::string_view header) {
  const auto folder = FolderOf(header);
  return folder == door.folder ||
         std::ranges::any_of(door.folders, [&](const auto& entry) { return Means(entry, folder); });
}

/// What is wrong with a line of a file of `room`; "" when nothing is.
std::string LineFault(const Door& room, bool is_header, std::string_view line) {
  if (const auto todo = line.find("TODO"); todo != std::string_view::npos) {
    const auto rest = line.substr(todo + 4);
    if (!rest.starts_with('(') || rest.starts_with("()")) return "a TODO without a place: write TODO(place)";
  }
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  if (!line.starts_with('#') || line.find("include") != line.find_first_not_of("# \t")) return "";
  const auto open = line.find_first_of("<\"");
  if (open == std::string_view::npos) return "an include that names no file";
  const std::string header(line.substr(open + 1, line.find_first_of(">\"", open + 1) - open - 1));
  const bool may =
      line[open] == '<' ? MayIncludeOutside(room, is_header, header) : MayIncludeInside(room, header);
  return may ? "" : "the door to " + header + " is shut";
}

/// The faults of a file, given by its path from src/, each as "path:line: what is wrong".
std::vector<std::string> Faults(const std::filesystem::path& path, const std::string& text) {
  const auto* room = DoorsOf(path.generic_string());
  if (room == nullptr) return {path.string() + ":1: lies in no folder of src/doors.txt"};
  std::vector<std::string> faults;
  for (const auto name : kNamesThatSayNothing) {
    const auto stem = path.stem().string();
    if (stem == name || stem.ends_with("_" + std::string(name))) {
      faults.push_back(path.string() + ":1: is named for no idea");
    }
  }
  std::istringstream lines(text);
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    const auto fault = LineFault(*room, path.extension() == ".h", line);
    if (!fault.empty()) faults.push_back(path.string() + ":" + std::to_string(number) + ": " + fault);
  }
  return faults;
}

std::vector<std::filesystem::path> Sources() {
  const std::filesystem::path root = ZEMLO_SOURCE_DIR "/src";
  std::vector<std::filesystem::path> sources;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
      sources.push_back(entry.path().lexically_relative(root));
  }
  return sources;
}

std::string TextOf(const std::filesystem::path& source) {
  std::ifstream file(std::filesystem::path(ZEMLO_SOURCE_DIR "/src") / source);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Doors, AreKeptByEverySourceFile) {
  const auto sources = Sources();
  EXPECT_GT(sources.size(), 50U);
  for (const auto& source : sources) EXPECT_THAT(Faults(source, TextOf(source)), IsEmpty());
}

/// The folders of src/ whose headers the files of each folder include.
std::set<std::pair<std::string, std::string>> UsedDoors() {
  std::set<std::pair<std::string, std::string>> used;
  constexpr std::string_view kInclude = "#include \"";
  for (const auto& source : Sources()) {
    std::istringstream lines(TextOf(source));
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with(kInclude))
        used.emplace(FolderOf(source.generic_string()), FolderOf(line.substr(kInclude.size())));
    }
  }
  return used;
}

TEST(Doors, LeadDownwardsAndAreUsed) {
  const auto used = UsedDoors();
  std::vector<std::string> below;
  for (const auto& door : Doors()) {
    for (const auto& entry : door.folders) {
      EXPECT_TRUE(std::ranges::any_of(below, [&](const auto& folder) { return Means(entry, folder); }))
          << door.folder << " has a door to " << entry << ", which does not lie below it";
      EXPECT_TRUE(std::ranges::any_of(
          used, [&](const auto& use) { return use.first == door.folder && Means(entry, use.second); }))
          << door.folder << " does not use its door to " << entry;
    }
    below.push_back(door.folder);
  }
}

TEST(Doors, AreFoundWhereTheyAreForcedOpen) {
  struct {
    std::string_view path, line;
    bool shut;
  } const cases[] = {
      {"composition/a.cpp", "#include <QString>", true},
      {"composition/a.cpp", "#include \"workspace/messaging/pending_request.h\"", false},
      {"composition/a.cpp", "#include \"workspace/requests/letter_request.h\"", true},
      {"workspace/letters/a.h", "#include \"workspace/pages/pages.h\"", true},
      {"workspace/document/a.h", "#include \"tracking/letter_grid.h\"", false},
      {"platform/a.h", "#include <unicode/uchar.h>", true},
      {"platform/a.cpp", "#include <unicode/uchar.h>", false},
      {"server/storage/a.cpp", "#include <QSqlQuery>", false},
      {"server/storage/a.cpp", "#include \"server/wire/wire_text.h\"", true},
      {"wordprocessor/printing/a.cpp", "#include <QProcess>", true},
      {"wordprocessor/printing/a.cpp", "#include <cups/cups.h>", false},
      {"host/a.cpp", "#include \"tracking/letter_grid.h\"", true},
      {"host/a.cpp", "#include <QWidget>", true},
      {"desktop/pages/a.cpp", "#include \"desktop/forms/form_views.h\"", true},
      {"apps/a.cpp", "#include \"wordprocessor/printing/pages.h\"", false},
      {"tracking/a.cpp", " #  include \"letter_grid.h\"", true},
      {"tracking/a.cpp", "// TODO: later", true},
      {"tracking/a.cpp", "// TODO(docs/decisions.md): later", false},
  };
  for (const auto& c : cases) {
    const auto faults = Faults(c.path, "#pragma once\n\n" + std::string(c.line) + "\n#include <vector>\n");
    const auto place = std::string(c.path) + ":3: ";
    if (c.shut) {
      EXPECT_THAT(faults, ElementsAre(HasSubstr(place))) << c.path << " " << c.line;
    } else {
      EXPECT_THAT(faults, IsEmpty()) << c.path << " " << c.line;
    }
  }
}

TEST(Doors, LeadToFilesInARoomThatAreNamedForAnIdea) {
  EXPECT_THAT(Faults("attic/a.cpp", ""), ElementsAre("attic/a.cpp:1: lies in no folder of src/doors.txt"));
  EXPECT_THAT(Faults("server/storage/sql_utils.cpp", ""), ElementsAre(HasSubstr("named for no idea")));
  EXPECT_THAT(Faults("platform/common.h", ""), ElementsAre(HasSubstr("named for no idea")));
  EXPECT_THAT(Faults("wordprocessor/document/common_template.cpp", ""), IsEmpty());
}

}  // namespace
