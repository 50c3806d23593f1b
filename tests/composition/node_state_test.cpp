#include "composition/node_state.h"

#include <array>
#include <charconv>
#include <string>

#include <gmock/gmock.h>

#include "platform/failure.h"

namespace composition {
namespace {

using platform::Failure;
using platform::XmlDocument;
using testing::HasSubstr;

struct Predicate {
  const char* name;
  const char* attribute;
  std::uint32_t bit;
  bool (ZEMLO_NodeState::*ask)() const;
};
#define PREDICATE(name, attribute, bit)           \
  Predicate {                                     \
#name, attribute, bit, &ZEMLO_NodeState::name \
  }

constexpr auto kPredicates = std::to_array<Predicate>({
    PREDICATE(IsTableType, "State", 1u << 0),
    PREDICATE(IsNonSQLType, "State", 1u << 1),
    PREDICATE(IsSysType, "State", 1u << 2),
    PREDICATE(IsUserType, "State", 1u << 3),
    PREDICATE(IsParaType, "State", 1u << 4),
    PREDICATE(IsLocalType, "State", 1u << 5),
    PREDICATE(IsTableRowType, "State", 1u << 6),
    PREDICATE(IsTableColumnType, "State", 1u << 7),
    PREDICATE(IsValueIsNull, "State", 1u << 8),
    PREDICATE(IsCanDisplay, "State", 1u << 9),
    PREDICATE(IsEditable, "State", 1u << 10),
    PREDICATE(IsInput, "State", 1u << 11),
    PREDICATE(IsIndirectRef, "State", 1u << 12),
    PREDICATE(IsVolatile, "State", 1u << 13),
    PREDICATE(HasFunction, "State", 1u << 14),
    PREDICATE(IsEof, "State", 1u << 15),
    PREDICATE(IsNull, "State", 1u << 16),
    PREDICATE(IsDefaultUsed, "State", 1u << 17),
    PREDICATE(IsUserUnSelected, "State", 1u << 18),
    PREDICATE(IsTreatIndRefOptional, "State", 1u << 19),
    PREDICATE(IsAddrRelated, "State", 1u << 20),
    PREDICATE(IsMultiColumns, "State", 1u << 21),
    PREDICATE(HasErr, "State", 1u << 22),
    PREDICATE(ErrInChild, "State", 1u << 23),
    PREDICATE(ErrInNonAddrChild, "State", 1u << 24),
    PREDICATE(ErrPopulateValue, "Err", 1u << 0),
    PREDICATE(ErrExecuteFunction, "Err", 1u << 1),
    PREDICATE(ErrExecuteSQL, "Err", 1u << 2),
    PREDICATE(ErrEofWhenMustExistReq, "Err", 1u << 3),
    PREDICATE(ErrNullWhenNotNullReq, "Err", 1u << 4),
    PREDICATE(ErrEmptyWhenNotEmptyReq, "Err", 1u << 5),
    PREDICATE(ErrZeroWhenNonZeroReq, "Err", 1u << 6),
    PREDICATE(ErrInputFldFailedtoValidate, "Err", 1u << 7),
    PREDICATE(ErrLtrGenerationIgnored, "Err", 1u << 8),
    PREDICATE(ErrAddressError, "Err", 1u << 9),
    PREDICATE(IsNonPOBoxReqd, "AddrState", 1u << 0),
    PREDICATE(IsInStateReqd, "AddrState", 1u << 1),
    PREDICATE(IsOutStateReqd, "AddrState", 1u << 2),
    PREDICATE(IsMailPreferred, "AddrState", 1u << 3),
    PREDICATE(IsResiPreferred, "AddrState", 1u << 4),
    PREDICATE(IsMailUsed, "AddrState", 1u << 7),
    PREDICATE(IsResiUsed, "AddrState", 1u << 8),
    PREDICATE(IsInStateCustomer, "AddrState", 1u << 9),
    PREDICATE(IsMailMissing, "AddrState", 1u << 11),
    PREDICATE(IsResiMissing, "AddrState", 1u << 12),
    PREDICATE(IsMailFailFinalist, "AddrState", 1u << 13),
    PREDICATE(IsResiFailFinalist, "AddrState", 1u << 14),
    PREDICATE(IsMailHasPOBox, "AddrState", 1u << 15),
    PREDICATE(IsResiHasPOBox, "AddrState", 1u << 16),
    PREDICATE(IsMailMarkedBad, "AddrState", 1u << 17),
    PREDICATE(IsResiMarkedBad, "AddrState", 1u << 18),
    PREDICATE(IsMailStateNotAsReqd, "AddrState", 1u << 19),
    PREDICATE(IsResiStateNotAsReqd, "AddrState", 1u << 20),
    PREDICATE(IsProcessingErr, "AddrState", 1u << 25),
    PREDICATE(IsAddressDbErr, "AddrState", 1u << 26),
    PREDICATE(IsFinalistErr, "AddrState", 1u << 27),
    PREDICATE(IsFinalistUnkStatusErr, "AddrState", 1u << 28),
    PREDICATE(IsNoUsableAddress, "AddrState", 1u << 29),
});

struct MaskGetter {
  const char* name;
  const char* attribute;
  std::uint32_t mask;
  std::int32_t (ZEMLO_NodeState::*get)() const;
};
#define MASK(name, attribute, mask)                \
  MaskGetter {                                     \
#name, attribute, mask, &ZEMLO_NodeState::name \
  }

constexpr auto kMaskGetters = std::to_array<MaskGetter>({
    MASK(GetTypesMask, "State", 0xFF),
    MASK(GetAttrMask, "State", 0x300700),
    MASK(GetFldConstMask, "State", 0x3007FF),
    MASK(GetStatesMask, "State", 0x6F800),
    MASK(GetMetaErrorsMask, "State", 0x1C00000),
    MASK(GetEmptyValuesAllowedTypesMask, "State", 0x59),
    MASK(GetErrorsMask, "Err", 0xFFFFFFFF),
    MASK(GetAddrInputsMask, "AddrState", 0x1F),
    MASK(GetAddrNonInputsMask, "AddrState", 0xFFFFFFE0),
    MASK(GetAddrAttrMask, "AddrState", 0x380),
    MASK(GetMailWarnsMask, "AddrState", 0xAA800),
    MASK(GetResiWarnsMask, "AddrState", 0x155000),
    MASK(GetAddrWarnsMask, "AddrState", 0x1FF800),
    MASK(GetAddrErrorsMask, "AddrState", 0x3E000000),
    MASK(GetAddrWarnsAndErrorsMask, "AddrState", 0x3E1FF800),
});

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
    DERIVED(CanHaveEmptyValue, "State", 0x59, true),
    DERIVED(IsSelfErroneous, "State", 0x400000, true),
    DERIVED(IsErroneous, "State", 0x1C00000, true),
    DERIVED(IsAddrErroneous, "AddrState", 0x3E000000, true),
    DERIVED(HasMailWarn, "AddrState", 0xAA800, true),
    DERIVED(HasResiWarn, "AddrState", 0x155000, true),
    DERIVED(IsMailGood, "AddrState", 0xAA800, false),
    DERIVED(IsResiGood, "AddrState", 0x155000, false),
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
    for (const auto& predicate : kPredicates) {
      const bool expected = attribute == predicate.attribute && bit == predicate.bit;
      EXPECT_EQ((state.*predicate.ask)(), expected) << predicate.name;
    }
  });
}

TEST(NodeState, EveryMaskHandsOutItsBitsOfItsWord) {
  ForEveryBit([](const std::string& attribute, std::uint32_t bit, const ZEMLO_NodeState& state) {
    for (const auto& getter : kMaskGetters) {
      const auto expected = attribute == getter.attribute ? bit & getter.mask : 0u;
      EXPECT_EQ(static_cast<std::uint32_t>((state.*getter.get)()), expected) << getter.name;
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

TEST(NodeState, AllBitsAtOnceStayInTheirMasks) {
  const auto state = StateOf(R"(State="FFFFFFFF" Err="FFFFFFFF" AddrState="FFFFFFFF")");
  for (const auto& getter : kMaskGetters) {
    EXPECT_EQ(static_cast<std::uint32_t>((state.*getter.get)()), getter.mask) << getter.name;
  }
}

TEST(NodeState, AFieldWithoutFlagWordsIsAsPlainAsAFreshOne) {
  for (const auto& state : {StateOf(""), ZEMLO_NodeState()}) {
    for (const auto& predicate : kPredicates) EXPECT_FALSE((state.*predicate.ask)()) << predicate.name;
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

TEST(NodeState, ReadsOneToEightHexadecimalDigitsOfEitherCase) {
  struct Case {
    const char* text;
    std::uint32_t errors;
  };
  for (const auto& [text, errors] : {Case{"0", 0}, Case{"1a", 0x1A}, Case{"0000001A", 0x1A},
                                     Case{"aBcDeF09", 0xABCDEF09}, Case{"80000000", 0x80000000}}) {
    const auto state = StateOf(std::string("Err=\"") + text + "\"");
    EXPECT_EQ(static_cast<std::uint32_t>(state.GetErrorsMask()), errors) << text;
  }
}

TEST(NodeState, RefusesATextThatIsNoFlagWordAndSaysWhere) {
  for (const std::string text :
       {"", " ", "123456789", "000000001", "0x1", "&amp;H1", "-1", "+1", " 1", "1 ", "G", "1.0", "٣"}) {
    SCOPED_TRACE("\"" + text + "\"");
    const Field field("AddrState=\"" + text + "\"");
    ZEMLO_NodeState state;
    try {
      state.InitFromNode(field.element());
      ADD_FAILURE() << "was taken";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.kind(), Failure::Kind::kDamaged);
      EXPECT_THAT(failure.description(), HasSubstr("attribute AddrState of element NAME"));
      EXPECT_THAT(failure.description(), HasSubstr("\"" + *field.element().Attribute("AddrState") + "\""));
    }
  }
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
