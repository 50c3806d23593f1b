#include "composition/node_state.h"

#include "platform/agreed/field_attributes.h"
#include "platform/failure.h"

namespace composition {
namespace {

using platform::Failure;

namespace field_attribute = platform::field_attribute;

}  // namespace

void ZEMLO_NodeState::Clear() {
  state_ = 0;
  err_ = 0;
  addr_state_ = 0;
}

void ZEMLO_NodeState::InitFromNode(platform::XmlElement oNode) {
  if (!oNode) throw Failure(Failure::Kind::kNotFound, "There is no element to read flag words from");
  state_ = platform::ReadFlagWord(oNode, field_attribute::kState);
  err_ = platform::ReadFlagWord(oNode, field_attribute::kErrors);
  addr_state_ = platform::ReadFlagWord(oNode, field_attribute::kAddressState);
  changed_ = false;
}

void ZEMLO_NodeState::InitCaps(std::int32_t /*nVal*/) {}

void ZEMLO_NodeState::SaveState(platform::XmlElement /*oNode*/) {}

void ZEMLO_NodeState::Save(platform::XmlElement oNode) {
  if (!changed_) return;
  oNode.RemoveAttribute(field_attribute::kState);
  if (state_ != 0) oNode.SetAttribute(field_attribute::kState, platform::FlagText(state_));
  changed_ = false;
}

void ZEMLO_NodeState::SetIsUserUnSelected(bool bSet) {
  state_ = bSet ? state_ | field_state::kUnselected : state_ & ~field_state::kUnselected;
  changed_ = true;
}

}  // namespace composition
