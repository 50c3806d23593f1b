#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// One folder of src/: the rooms and the outside libraries whose headers its files may include. Its own
/// headers and the C++ standard library are open to every room.
struct Room {
  std::string_view folder;
  std::string_view rooms;  // separated by blanks; "*" for any
  std::string_view libraries;
  bool libraries_in_headers = true;
};

constexpr std::string_view kOffice = "zlib pugixml cups fontconfig office posix linux";
constexpr std::string_view kInner =
    "platform workspace/messaging composition customers workspace tracking workspace/document";
constexpr auto kRooms = std::to_array<Room>({
    {"platform", "", "icu pugixml posix", /*libraries_in_headers=*/false},
    {"workspace/messaging", "platform", ""},
    {"composition", "platform workspace/messaging", ""},
    {"customers", "platform workspace/messaging composition", ""},
    {"workspace", "platform workspace/messaging composition customers", ""},
    {"tracking", "platform workspace/messaging composition customers workspace", ""},
    {"workspace/document", "platform workspace/messaging composition customers workspace tracking", ""},
    {"server", "platform", "qt_core qt_sql sqlite zlib"},
    {"reference", "platform", "qt_core qt_sql"},
    {"wordprocessor", "platform", kOffice},
    {"host", kInner, "qt_core posix"},
    {"desktop", kInner, "qt posix"},
    {"apps", "*", "*"},
});

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
    {"office", "LibreOfficeKit/"},
    {"posix",
     "sys/ dirent.h dlfcn.h fcntl.h grp.h poll.h pthread.h pwd.h signal.h spawn.h stdlib.h time.h unistd.h"},
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

/// The room of a path from src/: the one whose folder is the longest start of it; none in no room.
const Room* RoomOf(std::string_view path) {
  const Room* found = nullptr;
  for (const auto& room : kRooms) {
    const bool inside = path.starts_with(std::string(room.folder) + "/");
    if (inside && (found == nullptr || room.folder.size() > found->folder.size())) found = &room;
  }
  return found;
}

bool IsStandard(std::string_view header) {
  return header.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_") == std::string_view::npos;
}

bool MayIncludeOutside(const Room& room, bool is_header, std::string_view header) {
  const auto open = is_header && !room.libraries_in_headers ? "" : room.libraries;
  return IsStandard(header) || open == "*" || std::ranges::any_of(kLibraries, [&](const Library& library) {
           return Lists(open, library.name) && Lists(library.headers, header);
         });
}

bool MayIncludeInside(const Room& room, std::string_view header) {
  const auto* other = RoomOf(header);
  return other != nullptr && (other == &room || room.rooms == "*" || Lists(room.rooms, other->folder));
}

/// What is wrong with a line of a file of `room`; "" when nothing is.
std::string LineFault(const Room& room, bool is_header, std::string_view line) {
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
  const auto* room = RoomOf(path.generic_string());
  if (room == nullptr) return {path.string() + ":1: lies in no room"};
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

TEST(Doors, AreKeptByEverySourceFile) {
  const std::filesystem::path root = ZEMLO_SOURCE_DIR "/src";
  int read = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
    std::ifstream file(entry.path());
    const std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_THAT(Faults(entry.path().lexically_relative(root), text), IsEmpty());
    ++read;
  }
  EXPECT_GT(read, 50);
}

TEST(Doors, AreFoundWhereTheyAreForcedOpen) {
  struct {
    std::string_view path, line;
    bool shut;
  } const cases[] = {
      {"composition/a.cpp", "#include <QString>", true},
      {"composition/a.cpp", "#include \"workspace/messaging/workspace_state.h\"", false},
      {"composition/a.cpp", "#include \"workspace/requests/letter_request.h\"", true},
      {"workspace/document/a.h", "#include \"tracking/letter_grid.h\"", false},
      {"platform/a.h", "#include <unicode/uchar.h>", true},
      {"platform/a.cpp", "#include <unicode/uchar.h>", false},
      {"server/a.cpp", "#include <QSqlQuery>", false},
      {"server/a.cpp", "#include \"reference/reference.h\"", true},
      {"wordprocessor/a.cpp", "#include <QProcess>", true},
      {"wordprocessor/a.cpp", "#include <cups/cups.h>", false},
      {"host/a.cpp", "#include \"tracking/letter_grid.h\"", false},
      {"host/a.cpp", "#include <QWidget>", true},
      {"desktop/a.cpp", "#include \"wordprocessor/print.h\"", true},
      {"apps/a.cpp", "#include \"wordprocessor/print.h\"", false},
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
  EXPECT_THAT(Faults("attic/a.cpp", ""), ElementsAre("attic/a.cpp:1: lies in no room"));
  EXPECT_THAT(Faults("server/sql_utils.cpp", ""), ElementsAre(HasSubstr("named for no idea")));
  EXPECT_THAT(Faults("platform/common.h", ""), ElementsAre(HasSubstr("named for no idea")));
  EXPECT_THAT(Faults("wordprocessor/common_template.cpp", ""), IsEmpty());
}

}  // namespace
