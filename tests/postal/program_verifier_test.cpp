#include "postal/program_verifier.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

#include "platform/failure.h"

namespace postal {
namespace {

using platform::Failure;
using platform::PostalAddress;
using Kind = platform::AddressVerdict::Kind;
using namespace std::chrono_literals;

constexpr auto kPatience = 60s;

/// A program of an office's: Python, as docs/operations.md shows it.
class ProgramVerifierTest : public testing::Test {
 protected:
  ProgramVerifierTest() {
    folder_ = std::filesystem::temp_directory_path() /
              (std::string("program_") + testing::UnitTest::GetInstance()->current_test_info()->name() + "_" +
               std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
  }
  ~ProgramVerifierTest() override { std::filesystem::remove_all(folder_); }

  /// `answer` is what happens for each question, in Python; `reply` holds an answer that passes it.
  std::filesystem::path Program(const std::string& answer, const std::string& before = "") {
    const auto file = folder_ / "verifier";
    std::ofstream(file)
        << "#!/usr/bin/env python3\n"
           "import json, os, sys, time, subprocess\n"
           "folder = os.path.dirname(os.path.abspath(__file__))\n"
           "open(folder + '/starts', 'a').write('%d\\n' % os.getpid())\n" +
               before +
               "\nfor line in sys.stdin:\n"
               "    question = json.loads(line)\n"
               "    reply = {'id': question['id'], 'verdict': 'passed', 'line1': question['line1'].upper(),\n"
               "             'line2': '', 'city': 'HARTSFIELD', 'state': 'KV', 'zip': '88312-0431',\n"
               "             'county_code': '13', 'county': 'Hartsfield'}\n"
               "    if True:\n        " +
               answer + "\n";
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    return file;
  }
  static constexpr const char* kSays = "print(json.dumps(reply), flush=True)";

  /// The first word of the failure's kind and its text.
  std::string FailureOf(ProgramVerifier& verifier, const char* line1 = "1200 depot st") {
    try {
      verifier.Verify(Address(line1));
      return "none";
    } catch (const Failure& failure) {
      return (failure.kind() == Failure::Kind::kTimedOut ? "slow: " : "broken: ") + failure.description();
    }
  }
  static PostalAddress Address(const char* line1) { return {line1, "", "Hartsfield", "KV", "88312", "", ""}; }
  std::vector<int> Starts() const {
    std::ifstream file(folder_ / "starts");
    std::vector<int> starts;
    for (int process = 0; file >> process;) starts.push_back(process);
    return starts;
  }
  const std::filesystem::path& Folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
};

bool ComesTrue(const std::function<bool()>& what) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!what()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(5ms);
  }
  return true;
}

TEST_F(ProgramVerifierTest, IsStartedOnceAndAskedForEachAddress) {
  ProgramVerifier verifier(Program(kSays), kPatience);
  for (int times = 0; times < 3; ++times) {
    const auto verdict = verifier.Verify(Address("1200 depot st"));
    EXPECT_EQ(verdict.kind, Kind::kPassed);
    EXPECT_EQ(verdict.address.line1, "1200 DEPOT ST");
    EXPECT_EQ(verdict.address.zip, "883120431");
    EXPECT_EQ(verdict.address.county, "Hartsfield");
  }
  EXPECT_EQ(Starts().size(), 1U);
}

TEST_F(ProgramVerifierTest, TextsTravelWhole) {
  ProgramVerifier verifier(
      Program("reply['verdict'] = 'suggested'; print(json.dumps(reply, ensure_ascii=False), flush=True)"),
      kPatience);
  EXPECT_EQ(verifier.Verify(Address("12 \"Élan\" \\ St")).address.line1, "12 \"\xC3\x89LAN\" \\ ST");
}

TEST_F(ProgramVerifierTest, WhatItPassesIsStandardisedAndIsTheSameAddress) {
  ProgramVerifier verifier(
      Program(std::string("reply['line1'] = question['line1'].split('=')[-1]; reply['state'] = 'kv'; ") +
              kSays),
      kPatience);
  struct PassedCase {
    const char* entered;  // what the program passes stands behind "="
    Kind kind;
    const char* line1;
  };
  for (const auto& [entered, kind, line1] : {
           PassedCase{" 1200 Depot  Street ", Kind::kPassed, "1200 DEPOT ST"},
           {"1200 depot st=1202 depot st", Kind::kSuggested, "1202 DEPOT ST"},
           {"12 North St=12 N St", Kind::kSuggested, "12 N ST"},
           {"12345 Saint Christopher Martyr St", Kind::kUnknown, ""},
       }) {
    const auto verdict = verifier.Verify(Address(entered));
    EXPECT_EQ(verdict.kind, kind) << entered;
    EXPECT_EQ(verdict.address.line1, line1);
    EXPECT_EQ(verdict.address.state, kind == Kind::kUnknown ? "" : "KV");
  }
}

TEST_F(ProgramVerifierTest, AnUnknownAddressBringsNone) {
  ProgramVerifier verifier(Program(std::string("reply['verdict'] = 'unknown'; ") + kSays), kPatience);
  const auto verdict = verifier.Verify(Address("1200 depot st"));
  EXPECT_EQ(verdict.kind, Kind::kUnknown);
  EXPECT_EQ(verdict.address, PostalAddress());
}

TEST_F(ProgramVerifierTest, NonsenseFailsAndIsAskedAnew) {
  struct NonsenseCase {
    const char* answer;
    const char* said;
  };
  for (const auto& [answer, said] : {
           NonsenseCase{"print('hello', flush=True)", "is no JSON object: hello"},
           {"print('[1]', flush=True)", "is no JSON object: [1]"},
           {"reply['id'] += 1; print(json.dumps(reply), flush=True)",
            "is not about the address that was asked for"},
           {"del reply['verdict']; print(json.dumps(reply), flush=True)", "has no \"verdict\""},
           {"reply['line1'] = 5; print(json.dumps(reply), flush=True)", "has a \"line1\" that is no text"},
           {"reply['line1'] = ' '; print(json.dumps(reply), flush=True)", "has no \"line1\""},
           {"reply['city'] = 'A\\nB'; print(json.dumps(reply), flush=True)",
            "has control characters in \"city\""},
           {"reply['zip'] = '1234'; print(json.dumps(reply), flush=True)", "has a \"zip\" that is neither"},
           {"sys.stdout.buffer.write(b'{\"a\": \"\\xff\"}\\n'); sys.stdout.flush()", "is no"},
           {"print('x' * 200000, flush=True)", "answers a line of more than 65536 characters"},
       }) {
    SCOPED_TRACE(answer);
    std::filesystem::remove(Folder() / "starts");
    // Wrong for the first address of the first program only.
    ProgramVerifier verifier(
        Program(std::string("if os.path.exists(folder + '/once'):\n            ") + kSays +
                "\n        else:\n            open(folder + '/once', 'w')\n            " + answer),
        kPatience);
    const auto failure = FailureOf(verifier);
    EXPECT_TRUE(failure.starts_with("broken: ")) << failure;
    EXPECT_NE(failure.find(said), std::string::npos) << failure;
    EXPECT_EQ(FailureOf(verifier), "none");
    EXPECT_EQ(Starts().size(), 2U);
    std::filesystem::remove(Folder() / "once");
  }
}

TEST_F(ProgramVerifierTest, ASlowProgramFailsWithinItsTimeAndIsEnded) {
  ProgramVerifier verifier(Program("time.sleep(100)"), 300ms);
  const auto before = std::chrono::steady_clock::now();
  EXPECT_TRUE(FailureOf(verifier).starts_with("slow: The program ")) << FailureOf(verifier);
  EXPECT_LT(std::chrono::steady_clock::now() - before, 30s);
  for (const auto process : Starts())
    EXPECT_TRUE(ComesTrue([&] { return kill(process, 0) != 0; })) << "the program still runs";
}

TEST_F(ProgramVerifierTest, AProgramThatDoesNotReadCannotHoldTheServer) {
  struct DeafCase {
    const char* does;
    std::chrono::milliseconds time_out;
    const char* said;
  };
  for (const auto& [does, time_out, said] : {
           DeafCase{"sleep 100", 300ms, "slow: "},
           {"sleep 100 >&-", kPatience, "has ended without an answer."},
           {"yes", kPatience, "writes, and does not read what it is asked."},
       }) {
    const auto file = Folder() / "deaf";
    std::ofstream(file) << "#!/bin/sh\nexec " << does << "\n";
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    ProgramVerifier verifier(file, time_out);
    const std::string long_line(4'000'000, 'x');
    const auto failure = FailureOf(verifier, long_line.c_str());
    EXPECT_NE(failure.find(said), std::string::npos) << failure;
  }
}

TEST_F(ProgramVerifierTest, IsNotWaitedForWhenEverythingEnds) {
  ProgramVerifier verifier(Program("time.sleep(100)"), kPatience);
  std::stop_source ending;
  std::jthread user([&] {
    ComesTrue([&] { return !Starts().empty(); });
    ending.request_stop();
  });
  const auto before = std::chrono::steady_clock::now();
  EXPECT_THROW(verifier.Verify(Address("1200 depot st"), ending.get_token()), Failure);
  EXPECT_LT(std::chrono::steady_clock::now() - before, kPatience / 2);
}

TEST_F(ProgramVerifierTest, ADeadProgramTellsItsLastWords) {
  ProgramVerifier verifier(Program("sys.exit('The licence has expired.')"), kPatience);
  const auto failure = FailureOf(verifier);
  EXPECT_NE(failure.find("has ended without an answer. It said \"The licence has expired.\"."),
            std::string::npos)
      << failure;
}

TEST_F(ProgramVerifierTest, AClosedOutputIsNoAnswer) {
  ProgramVerifier verifier(Program("os.close(1); time.sleep(100)"), kPatience);
  EXPECT_NE(FailureOf(verifier).find("has ended without an answer."), std::string::npos);
}

TEST_F(ProgramVerifierTest, KilledBetweenTwoAddressesItIsStartedAnew) {
  ProgramVerifier verifier(Program(kSays), kPatience);
  EXPECT_EQ(FailureOf(verifier), "none");
  const auto process = Starts().at(0);
  kill(process, SIGKILL);
  // A zombie until it is reaped: its output is closed by then.
  ASSERT_TRUE(ComesTrue([&] {
    std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
    std::string text((std::istreambuf_iterator<char>(stat)), {});
    return text.empty() || text.find(") Z") != std::string::npos;
  }));
  EXPECT_EQ(FailureOf(verifier), "none");
  EXPECT_EQ(Starts().size(), 2U);
}

TEST_F(ProgramVerifierTest, WhatItSaysOnStandardErrorStopsNothing) {
  ProgramVerifier verifier(
      Program(std::string("sys.stderr.write('noise\\n' * 200000); sys.stderr.flush(); ") + kSays), kPatience);
  for (int times = 0; times < 3; ++times) EXPECT_EQ(FailureOf(verifier), "none");
  EXPECT_EQ(Starts().size(), 1U);
}

TEST_F(ProgramVerifierTest, AnAnswerTooManyIsNeverTheNextAddressesAnswer) {
  ProgramVerifier verifier(Program(std::string(kSays) + "; " + kSays), kPatience);
  for (const auto* line : {"1 depot st", "2 depot st", "3 depot st", "4 depot st"}) {
    const auto failure = FailureOf(verifier, line);
    // Caught before the question where it has come by then, else by its number.
    EXPECT_TRUE(failure == "none" || failure.find("is not about the address") != std::string::npos)
        << failure;
  }
}

TEST_F(ProgramVerifierTest, EndsWithItsWholeProcessGroup) {
  int child = 0;
  {
    ProgramVerifier verifier(Program(kSays,
                                     "child = subprocess.Popen(['sleep', '1000'])\nopen(folder + '/child', "
                                     "'w').write('%d\\n' % child.pid)"),
                             kPatience);
    EXPECT_EQ(FailureOf(verifier), "none");
    std::ifstream(Folder() / "child") >> child;
    ASSERT_GT(child, 0);
  }
  EXPECT_TRUE(ComesTrue([&] {
    std::ifstream stat("/proc/" + std::to_string(child) + "/stat");
    const std::string text((std::istreambuf_iterator<char>(stat)), {});
    return text.empty() || text.find(") Z") != std::string::npos;
  }));
}

TEST_F(ProgramVerifierTest, AProgramThatIsNotThereIsNamed) {
  ProgramVerifier verifier(Folder() / "nothing", kPatience);
  EXPECT_NE(FailureOf(verifier).find("nothing\" that verifies addresses does not start: "),
            std::string::npos);
}

}  // namespace
}  // namespace postal
