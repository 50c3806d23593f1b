#include "composition/node_state.h"

#include <array>
#include <charconv>
#include <string>

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "tests/support/field_flags.h"

namespace composition {
namespace {

using platform::Failure;
using platform::XmlDocument;

using Node = ZEMLO_NodeState;
using Question = bool (Node::*)() const;

/// What asks for each flag, in the order of the flags.
constexpr Question kQuestions[] = {&Node::IsTableType,
                                   &Node::IsNonSQLType,
                                   &Node::IsSysType,
                                   &Node::IsUserType,
                                   &Node::IsParaType,
                                   &Node::IsLocalType,
                                   &Node::IsTableRowType,
                                   &Node::IsTableColumnType,
                                   &Node::IsValueIsNull,
                                   &Node::IsCanDisplay,
                                   &Node::IsEditable,
                                   &Node::IsInput,
                                   &Node::IsIndirectRef,
                                   &Node::IsVolatile,
                                   &Node::HasFunction,
                                   &Node::IsEof,
                                   &Node::IsNull,
                                   &Node::IsDefaultUsed,
                                   &Node::IsUserUnSelected,
                                   &Node::IsTreatIndRefOptional,
                                   &Node::IsAddrRelated,
                                   &Node::IsMultiColumns,
                                   &Node::HasErr,
                                   &Node::ErrInChild,
                                   &Node::ErrInNonAddrChild,
                                   &Node::ErrPopulateValue,
                                   &Node::ErrExecuteFunction,
                                   &Node::ErrExecuteSQL,
                                   &Node::ErrEofWhenMustExistReq,
                                   &Node::ErrNullWhenNotNullReq,
                                   &Node::ErrEmptyWhenNotEmptyReq,
                                   &Node::ErrZeroWhenNonZeroReq,
                                   &Node::ErrInputFldFailedtoValidate,
                                   &Node::ErrLtrGenerationIgnored,
                                   &Node::ErrAddressError,
                                   &Node::IsNonPOBoxReqd,
                                   &Node::IsInStateReqd,
                                   &Node::IsOutStateReqd,
                                   &Node::IsMailPreferred,
                                   &Node::IsResiPreferred,
                                   &Node::IsMailUsed,
                                   &Node::IsResiUsed,
                                   &Node::IsInStateCustomer,
                                   &Node::IsMailMissing,
                                   &Node::IsResiMissing,
                                   &Node::IsMailFailFinalist,
                                   &Node::IsResiFailFinalist,
                                   &Node::IsMailHasPOBox,
                                   &Node::IsResiHasPOBox,
                                   &Node::IsMailMarkedBad,
                                   &Node::IsResiMarkedBad,
                                   &Node::IsMailStateNotAsReqd,
                                   &Node::IsResiStateNotAsReqd,
                                   &Node::IsProcessingErr,
                                   &Node::IsAddressDbErr,
                                   &Node::IsFinalistErr,
                                   &Node::IsFinalistUnkStatusErr,
                                   &Node::IsNoUsableAddress};
static_assert(std::size(kQuestions) == tests::kFieldFlags.size());

struct Derived {
  const char* name;
  const char* attribute;
  std::uint32_t bits;  // any of these decides
  bool when_set;       // what it answers then
  bool (ZEMLO_NodeState::*ask)() const;
};
#define DERIVED(name, attribute, bits, when_set)             \
  Derived {                                                  \
#name, attribute, bits, when_set, &ZEMLO_NodeState::name \
  }

constexpr auto kDerived = std::to_array<Derived>({
    DERIVED(CanHaveEmptyValue, "State", field_state::kTypesThatMayBeEmpty, true),
    DERIVED(IsSelfErroneous, "State", field_state::kHasError, true),
    DERIVED(IsErroneous, "State", field_state::kSummaries, true),
    DERIVED(IsAddrErroneous, "AddrState", field_address::kErrors, true),
    DERIVED(HasMailWarn, "AddrState", field_address::kMailWarnings, true),
    DERIVED(HasResiWarn, "AddrState", field_address::kResidentialWarnings, true),
    DERIVED(IsMailGood, "AddrState", field_address::kMailWarnings, false),
    DERIVED(IsResiGood, "AddrState", field_address::kResidentialWarnings, false),
});

/// A field's element with the given attributes.
class Field {
 public:
  explicit Field(const std::string& attributes)
      : document_(XmlDocument::Parse("<NAME " + attributes + "/>").OrFail()) {}
  platform::XmlElement element() const { return document_.Root(); }
  std::string xml() const { return document_.Root().Xml(); }

 private:
  XmlDocument document_;
};

ZEMLO_NodeState StateOf(const std::string& attributes) {
  const Field field(attributes);
  ZEMLO_NodeState state;
  state.InitFromNode(field.element());
  return state;
}

std::string Word(const std::string& attribute, std::uint32_t word) {
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), word, 16).ptr;
  return attribute + "=\"" + std::string(digits.data(), end) + "\"";
}

/// Calls `check` with every single bit of the three words.
template <typename Check>
void ForEveryBit(Check check) {
  for (const std::string attribute : {"State", "Err", "AddrState"}) {
    for (int bit = 0; bit < 32; ++bit) {
      SCOPED_TRACE(Word(attribute, 1u << bit));
      check(attribute, 1u << bit, StateOf(Word(attribute, 1u << bit)));
    }
  }
}

TEST(NodeState, EveryPredicateLooksAtItsOwnBitOnly) {
  ForEveryBit([](const std::string& attribute, std::uint32_t bit, const ZEMLO_NodeState& state) {
    for (std::size_t place = 0; place < std::size(kQuestions); ++place) {
      const auto& flag = tests::kFieldFlags[place];
      EXPECT_EQ((state.*kQuestions[place])(), attribute == flag.word && bit == flag.bits) << flag.name;
    }
  });
}

TEST(NodeState, DerivedPredicatesFollowAnyBitOfTheirGroup) {
  ForEveryBit([](const std::string& attribute, std::uint32_t bit, const ZEMLO_NodeState& state) {
    for (const auto& derived : kDerived) {
      const bool decides = attribute == derived.attribute && (bit & derived.bits) != 0;
      EXPECT_EQ((state.*derived.ask)(), decides == derived.when_set) << derived.name;
    }
  });
}

TEST(NodeState, AFieldWithoutFlagWordsIsAsPlainAsAFreshOne) {
  for (const auto& state : {StateOf(""), ZEMLO_NodeState()}) {
    for (const auto question : kQuestions) EXPECT_FALSE((state.*question)());
    EXPECT_FALSE(state.IsErroneous());
    EXPECT_FALSE(state.CanHaveEmptyValue());
    EXPECT_TRUE(state.IsMailGood());
    EXPECT_TRUE(state.IsResiGood());
  }
}

TEST(NodeState, AnIgnoredLetterIsOneWithNoOtherError) {
  EXPECT_TRUE(StateOf(R"(Err="100")").IsLtrGenIgnored());
  for (const auto* word : {"0", "1", "101", "80000100"}) {
    EXPECT_FALSE(StateOf(std::string("Err=\"") + word + "\"").IsLtrGenIgnored()) << word;
  }
  EXPECT_TRUE(StateOf(R"(Err="101")").ErrLtrGenerationIgnored());
}

TEST(NodeState, WordsReadBeforeADamagedOneCountAndAChangeStaysUnsaved) {
  auto state = StateOf(R"(State="1" Err="1" AddrState="1")");
  state.SetIsUserUnSelected(true);
  const Field damaged(R"(State="2" Err="?" AddrState="2")");
  EXPECT_THROW(state.InitFromNode(damaged.element()), Failure);
  EXPECT_EQ(state.GetTypesMask(), 2);
  EXPECT_EQ(state.GetErrorsMask(), 1);
  EXPECT_EQ(state.GetAddrInputsMask(), 1);
  state.Save(damaged.element());
  EXPECT_EQ(damaged.element().Attribute("State"), "2");
}

TEST(NodeState, ThereHasToBeAnElement) {
  ZEMLO_NodeState state;
  EXPECT_THROW(state.InitFromNode(platform::XmlElement()), Failure);
  state.SetIsUserUnSelected(true);
  EXPECT_THROW(state.Save(platform::XmlElement()), Failure);
}

struct SaveCase {
  const char* read;     // attributes before
  const char* steps;    // s: set, c: clear the flag, 0: Clear, n: the two operations without effect
  const char* written;  // attributes after
};

class NodeStateSave : public testing::TestWithParam<SaveCase> {};

TEST_P(NodeStateSave, WritesTheMainWordWhereItWasChanged) {
  const auto& [read, steps, written] = GetParam();
  SCOPED_TRACE(std::string(read) + " after " + steps);
  const Field field(read);
  ZEMLO_NodeState state;
  state.InitFromNode(field.element());
  for (const char step : std::string(steps)) {
    if (step == 's' || step == 'c') state.SetIsUserUnSelected(step == 's');
    if (step == '0') state.Clear();
    if (step == 'n') {
      state.InitCaps(7);
      state.SaveState(field.element());
    }
  }
  state.Save(field.element());
  EXPECT_EQ(field.xml(), Field(written).xml());
}

INSTANTIATE_TEST_SUITE_P(Forms, NodeStateSave,
                         testing::Values(SaveCase{R"(State="00ff")", "", R"(State="00ff")"},
                                         SaveCase{R"(State="00ff")", "n", R"(State="00ff")"},
                                         SaveCase{R"(State="00ff")", "0", R"(State="00ff")"},
                                         SaveCase{R"(State="00ff")", "c", R"(State="FF")"},
                                         SaveCase{R"(State="ff" Kind="a")", "s", R"(Kind="a" State="400FF")"},
                                         SaveCase{R"(State="80000000")", "s", R"(State="80040000")"},
                                         SaveCase{R"(State="40000" Err="0a")", "c", R"(Err="0a")"},
                                         SaveCase{"", "s", R"(State="40000")"}, SaveCase{"", "c", ""},
                                         SaveCase{R"(State="400FF" Err="1" AddrState="01")", "s0",
                                                  R"(Err="1" AddrState="01")"}));

TEST(NodeState, SavesOnceAndReadingForgetsWhatWasNotSaved) {
  const Field field(R"(State="1")");
  ZEMLO_NodeState state;
  state.InitFromNode(field.element());
  state.SetIsUserUnSelected(true);
  state.Save(field.element());
  field.element().SetAttribute("State", "0001");
  state.Save(field.element());
  EXPECT_EQ(field.element().Attribute("State"), "0001");

  state.SetIsUserUnSelected(true);
  state.InitFromNode(field.element());
  state.Save(field.element());
  EXPECT_EQ(field.element().Attribute("State"), "0001");
}

}  // namespace
}  // namespace composition
