#include <gmock/gmock.h>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

/// What a script learns of a command: its status, and the JSON on standard output.
class Scripts : public PreparedOffice {
 protected:
  /// The server reads, and takes no record: as on a disk that has filled since the letter was asked for.
  void ServerTakesNoRecords() {
    ServerSql(
        "CREATE TRIGGER full BEFORE INSERT ON letter_history BEGIN "
        "SELECT RAISE(FAIL, 'database or disk is full'); END");
  }
  void ServerTakesRecords() { ServerSql("DROP TRIGGER full"); }
  /// Every start has something to tell: a line of the catalogue without its file, and a failed download.
  void TellsOfOtherLetters() {
    std::filesystem::remove(data_ / "server/templates/CTL110_2701.docx");
    WriteFile(data_ / "server/templates/BND103_2405.docx", "");
    RemoveLocalCopy();
  }
  void RemoveLocalCopy() { std::filesystem::remove(data_ / "templates/BND103_2405.docx"); }
  Outcome Print(std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"--type", "101", "--customer", "100001", "--print"});
    return Letters("letter", more);
  }
  std::vector<std::filesystem::path> Notes() { return FilesIn(data_ / "unrecorded"); }
  /// The command line as a shell runs it, so that it can end in "> /dev/full".
  std::string Line(const std::string& command, const std::string& rest = "") {
    return Quoted(std::string(ZEMLO_BINARY_DIR) + "/bin/zemlo-letters") + " " + command + " --data " +
           Quoted(data_.path().string()) + " " + rest;
  }
  Outcome Shell(const std::string& command, const std::string& rest) { return RunShell(Line(command, rest)); }
};

TEST_F(Scripts, LearnThatALetterWasPrintedThoughItCouldNotBeRecorded) {
  ServerTakesNoRecords();
  const auto letter = Print({"--json"});
  EXPECT_EQ(letter.status, 4) << letter.err;
  EXPECT_THAT(letter.out, AllOf(HasSubstr("\"printed\": \"/"), HasSubstr("\"recorded\": false"),
                                HasSubstr("\"reason\": "), HasSubstr("disk is full")));
  EXPECT_THAT(Printed(), SizeIs(1));
  EXPECT_THAT(Notes(), SizeIs(1));

  ServerTakesRecords();
  const auto second = Print({"--json"});
  EXPECT_EQ(second.status, 0) << second.err;
  EXPECT_THAT(second.out, AllOf(HasSubstr("\"recorded\": true"), Not(HasSubstr("reason"))));
  EXPECT_THAT(second.err, HasSubstr("zemlo-letters unrecorded")) << "the first letter still waits";
  EXPECT_THAT(second.err, Not(HasSubstr("?"))) << "nobody can answer";
}

TEST_F(Scripts, RecordTheLettersThatWait) {
  ServerTakesNoRecords();
  ASSERT_EQ(Print().status, 4);
  ASSERT_EQ(Letters("letter", {"--type", "101", "--customer", "100002", "--print"}).status, 4);
  const auto list = Letters("unrecorded", {"--json"});
  EXPECT_EQ(list.status, 0);
  EXPECT_THAT(list.out, AllOf(HasSubstr("for customer 100001"), HasSubstr("for customer 100002"),
                              HasSubstr("\"state\": \"printed\"")));

  const auto refused = Letters("unrecorded", {"--record", "--json"});
  EXPECT_EQ(refused.status, 4);
  EXPECT_THAT(refused.out, AllOf(HasSubstr("\"result\": \"not recorded\""), HasSubstr("disk is full"),
                                 Not(HasSubstr("\"reason\": \"\\n")), Not(HasSubstr("\"reason\": \"\""))));

  ServerTakesRecords();
  const auto key = Notes().front().stem().string();
  EXPECT_EQ(Letters("unrecorded", {"--record", "no-such-note"}).status, 1);
  const auto one = Letters("unrecorded", {"--record", key});
  EXPECT_EQ(one.status, 0) << one.err;
  EXPECT_THAT(one.out, HasSubstr(key));
  EXPECT_THAT(Notes(), SizeIs(1));
  EXPECT_EQ(Letters("unrecorded", {"--record"}).status, 0);
  EXPECT_THAT(Notes(), IsEmpty());
  EXPECT_THAT(History("CUST_ID"), AllOf(HasSubstr("100001\n"), HasSubstr("100002\n"), SizeIs(14)));
  EXPECT_EQ(Letters("unrecorded", {"--json"}).out, "[\n]\n");
}

TEST_F(Scripts, ForgetOnlyLettersThatAreNamed) {
  ServerTakesNoRecords();
  ASSERT_EQ(Print().status, 4);
  EXPECT_EQ(Letters("unrecorded", {"--forget"}).status, 2);
  EXPECT_THAT(Notes(), SizeIs(1));
  EXPECT_EQ(Letters("unrecorded", {"--forget", Notes().front().stem().string()}).status, 0);
  EXPECT_THAT(Notes(), IsEmpty());
  EXPECT_EQ(History("CUST_ID"), "");
}

TEST_F(Scripts, FindTheReasonOfARefusalInTheJson) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> refusals = {
      {{"letter", "--type", "999", "--customer", "100001"}, "There is no letter type"},
      {{"letter", "--type", "110", "--customer", "100001"}, "Form number is required"},
      {{"letter", "--type", "101", "--customer", "100018", "--print"}, "address is incomplete"},
      {{"letter", "--type", "101"}, "Name either --customer"},
      {{"history", "--to", "2026-01-01"}, "FROM date is required"},
      {{"unrecorded", "--record", "x"}, "There is no note"},
  };
  for (const auto& [words, reason] : refusals) {
    const auto run = Letters(words[0], [&] {
      std::vector<std::string> rest(words.begin() + 1, words.end());
      rest.emplace_back("--json");
      return rest;
    }());
    EXPECT_NE(run.status, 0) << reason;
    EXPECT_THAT(run.out, AllOf(HasSubstr("\"reason\": \""), HasSubstr(reason))) << words[0];
  }
}

// What was told on the way, of other letters, stood in front of the reason.
TEST_F(Scripts, FindNothingButTheReasonInTheReason) {
  ServerTakesNoRecords();
  ASSERT_EQ(Print().status, 4);
  TellsOfOtherLetters();
  const std::string reason = "There is no letter type \"999\". \"zemlo-letters types\" lists them.";
  const auto refused = Letters("letter", {"--type", "999", "--customer", "100001", "--json"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out,
            "{\n    \"reason\": \"There is no letter type \\\"999\\\". "
            "\\\"zemlo-letters types\\\" lists them.\"\n}\n");
  EXPECT_THAT(refused.err,
              AllOf(HasSubstr("CTL110_2701.docx"), HasSubstr("is not recorded"), HasSubstr(reason)));
  EXPECT_EQ(Letters("letter", {"--type", "999", "--customer", "100001", "--quiet"}).err, reason + "\n");

  WriteFile(data_ / "unrecorded/damaged.printed", "<letter");
  EXPECT_THAT(Letters("unrecorded", {"--record", "x", "--json"}).out,
              HasSubstr("\"reason\": \"There is no note \\\"x\\\""));

  const auto printed = Print({"--json"});
  EXPECT_EQ(printed.status, 4);
  EXPECT_THAT(printed.out, AllOf(HasSubstr("disk is full"), Not(HasSubstr("CTL110_2701.docx"))));
}

TEST_F(Scripts, HearNothingButRefusalsWhenTheyAskForQuiet) {
  TellsOfOtherLetters();
  EXPECT_THAT(Print().err, AllOf(HasSubstr("CTL110_2701.docx"), HasSubstr("File download not successful.")));
  RemoveLocalCopy();
  const auto letter = Print({"--quiet"});
  EXPECT_EQ(letter.status, 0);
  EXPECT_EQ(letter.err, "");
  EXPECT_THAT(letter.out, StartsWith("Printed: "));
  const auto init = Letters("init", {"--quiet"});
  EXPECT_EQ(init.status, 0);
  EXPECT_EQ(init.out + init.err, "");
  EXPECT_THAT(Letters("init", {}).out, HasSubstr("is ready"));
}

TEST_F(Scripts, LearnThatTheOutputWasLost) {
  const std::string commands[] = {
      "customers",
      "customers --json",
      "types",
      "history --customer 100001",
      "unrecorded --json",
      "customers --help",
      "letter --type 101 --customer 100001 --print --json",
      "letter --type 101 --customer 100018 --explain",
  };
  for (const auto& command : commands) {
    const auto full = Shell(command, "> /dev/full");
    const bool is_refused = command.ends_with("--explain");
    EXPECT_EQ(full.status, is_refused ? 1 : 3) << command;
    EXPECT_THAT(full.err, HasSubstr("the disk is full")) << command;
    EXPECT_EQ(Shell(command, ">&-").status, is_refused ? 1 : 3) << command;
    const auto gone = RunShell("bash -o pipefail -c " + Quoted(Line(command, "| true")));
    EXPECT_EQ(gone.status, is_refused ? 1 : 3) << command;
    EXPECT_THAT(gone.err, Not(HasSubstr("utput could not"))) << command << ": who left wants to hear nothing";
  }
}

TEST_F(Scripts, ReadOnAFullDiskAndAreToldThatItIsFull) {
  ASSERT_EQ(Print().status, 0);
  // No file may grow past 4 KB: not the database's log, nor the letter.
  const auto on_full_disk = [&](const std::string& command) {
    return RunShell("ulimit -f 8; " + Line(command));
  };
  for (const auto* command : {"customers --find merriweather", "types", "history --customer 100001"}) {
    const auto list = on_full_disk(command);
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_THAT(list.out, Not(IsEmpty())) << command;
  }
  const auto letter = on_full_disk("letter --type 101 --customer 100001 --print --json");
  EXPECT_EQ(letter.status, 1);
  EXPECT_THAT(letter.out, AllOf(HasSubstr("\"reason\": "), HasSubstr("ree some space")));
  EXPECT_THAT(Printed(), SizeIs(1));
  EXPECT_THAT(Notes(), IsEmpty());
}

TEST_F(Scripts, AreToldNothingOnTheWay) {
  const auto letter = Print();
  EXPECT_EQ(letter.err, "") << "steps are for who watches";
  ServerTakesNoRecords();
  ASSERT_EQ(Print().status, 4);
  EXPECT_THAT(Letters("history", {"--customer", "100001"}).err, HasSubstr("not recorded"));
  EXPECT_EQ(Letters("history", {"--customer", "100001", "--quiet"}).err, "");
}

TEST_F(Scripts, AreRefusedWhatCannotBeMeant) {
  const std::vector<std::pair<std::string, std::string>> faults = {
      {"letter --type 101 --customer 100001 --save ''", "--save needs a value"},
      {"letter --type 101 --type 102 --customer 100001", "--type is given twice"},
      {"letter --type 103 --customer 100001 --set U_A=1 --set u_a=2", "--set gives \"u_a\" twice"},
      {"letter --type 103 --customer 100001 --set $'U_A=\\xff'", "--set has bytes that are not UTF-8"},
      {"letter --type 103 --customer 100001 --set=$'U_A=\\xff'", "--set has bytes that are not UTF-8"},
      {"history --customer ''", "--customer needs a value"},
  };
  for (const auto& [command, reason] : faults) {
    const auto run = RunShell("bash -c " + Quoted(Line(command)));
    EXPECT_EQ(run.status, 2) << command;
    EXPECT_THAT(run.err, HasSubstr(reason));
  }
  EXPECT_EQ(RunLetters({"merge", "", "", ""}).status, 2);
  EXPECT_EQ(RunLetters({"types", "--data", ""}).status, 2);
  EXPECT_EQ(Letters("customers", {"--find", ""}).status, 0);
}

TEST_F(Scripts, CannotBeMadeToWorkTheTerminalByAName) {
  ServerSql(
      "UPDATE customer SET CUST_BSNS_NM = 'Bell' || char(7, 27) || '[2J' || char(10, 155, 8238) || 'x'"
      " WHERE CUST_ID = '100001'");
  EXPECT_THAT(Letters("customers", {}).out, HasSubstr("Bell\\u0007\\u001b[2J\\u000a\\u009b\\u202ex"));
  EXPECT_THAT(Letters("customers", {"--json"}).out, AllOf(StartsWith("["), HasSubstr("\\u009b\\u202ex")));
  EXPECT_THAT(RunLetters({"types", "--data", "/no\x1b]0;x\x07"}).err, HasSubstr("/no\\u001b]0;x\\u0007"));
}

}  // namespace
}  // namespace tests
