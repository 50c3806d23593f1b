#include "platform/xml/xml.h"

#include <pugixml.hpp>

#include <utility>

#include "platform/failure.h"
#include "platform/xml/xml_characters.h"
#include "platform/xml/xml_strictness.h"
#include "platform/xml/xml_writer.h"

namespace platform {
namespace {

// A value of blanks stays a value; blanks between elements are lay-out.
constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_ws_pcdata_single;

pugi::xml_node Require(pugi::xml_node_struct* node) {
  if (node == nullptr) throw Failure(Failure::Kind::kInternal, "There is no such XML element.");
  return pugi::xml_node(node);
}

std::string RequireText(std::string_view text) {
  const auto good = XmlCharactersLength(text);
  if (good == text.size()) return std::string(text);
  throw Failure(Failure::Kind::kRefused,
                "The text \"" + std::string(text.substr(0, good)) +
                    "...\" goes on with a character that XML cannot carry. Remove it.");
}

std::string RequireName(std::string_view name) {
  auto text = RequireText(name);
  if (!text.empty() && XmlNameLength(text) == text.size()) return text;
  throw Failure(Failure::Kind::kRefused, "\"" + text + "\" is no name of an XML element or attribute.");
}

/// The node after `node` in document order, inside `top`; none after the last one.
pugi::xml_node NextInside(pugi::xml_node node, const pugi::xml_node& top) {
  if (node.first_child()) return node.first_child();
  while (node != top && !node.next_sibling()) node = node.parent();
  return node == top ? pugi::xml_node() : node.next_sibling();
}

/// The first element of that name after `node` in document order, inside `top`.
pugi::xml_node NextNamed(pugi::xml_node node, const pugi::xml_node& top, std::string_view name) {
  do {
    node = NextInside(node, top);
  } while (node && (node.type() != pugi::node_element || node.name() != name));
  return node;
}

}  // namespace

std::string XmlElement::Name() const {
  return pugi::xml_node(node_).name();
}

std::optional<std::string> XmlElement::Attribute(std::string_view name) const {
  for (const auto& attribute : pugi::xml_node(node_).attributes()) {
    if (attribute.name() == name) return attribute.value();
  }
  return std::nullopt;
}

void XmlElement::SetAttribute(std::string_view name, std::string_view value) {
  auto element = Require(node_);
  const auto attribute_name = RequireName(name);
  const auto attribute_value = RequireText(value);
  auto attribute = element.attribute(attribute_name.c_str());
  if (!attribute) attribute = element.append_attribute(attribute_name.c_str());
  attribute.set_value(attribute_value.c_str());
}

void XmlElement::RemoveAttribute(std::string_view name) {
  Require(node_).remove_attribute(std::string(name).c_str());
}

std::string XmlElement::Text() const {
  const pugi::xml_node element(node_);
  std::string text;
  for (auto node = NextInside(element, element); node; node = NextInside(node, element)) {
    text += node.value();  // "" for an element
  }
  return text;
}

void XmlElement::SetText(std::string_view text) {
  auto element = Require(node_);
  const auto new_text = RequireText(text);
  element.remove_children();
  if (!new_text.empty()) element.append_child(pugi::node_pcdata).set_value(new_text.c_str());
}

std::vector<XmlElement> XmlElement::Children() const {
  std::vector<XmlElement> children;
  for (const auto& child : pugi::xml_node(node_).children()) {
    if (child.type() == pugi::node_element) children.push_back(XmlElement(child.internal_object()));
  }
  return children;
}

XmlElement XmlElement::FirstByTagName(std::string_view name) const {
  const pugi::xml_node element(node_);
  return XmlElement(NextNamed(element, element, name).internal_object());
}

XmlElement XmlElement::AppendChild(std::string_view name) {
  return XmlElement(Require(node_).append_child(RequireName(name).c_str()).internal_object());
}

void XmlElement::RemoveChild(XmlElement child) {
  if (!Require(node_).remove_child(Require(child.node_))) {
    throw Failure(Failure::Kind::kInternal, "The XML element is no child of the element it is removed from.");
  }
}

std::string XmlElement::Xml() const {
  return node_ == nullptr ? std::string() : WriteXml(pugi::xml_node(node_));
}

struct XmlDocument::Tree {
  pugi::xml_document document;
};

XmlDocument::XmlDocument(std::string_view root_name) : tree_(std::make_unique<Tree>()) {
  tree_->document.append_child(RequireName(root_name).c_str());
}

XmlDocument::XmlDocument(std::unique_ptr<Tree> tree) : tree_(std::move(tree)) {}
XmlDocument::XmlDocument(XmlDocument&&) noexcept = default;
XmlDocument& XmlDocument::operator=(XmlDocument&&) noexcept = default;
XmlDocument::~XmlDocument() = default;

XmlDocument::ParseResult XmlDocument::Parse(std::string_view text) {
  if (auto fault = FindXmlFault(text)) return {std::nullopt, *std::move(fault)};
  auto tree = std::make_unique<Tree>();
  const auto outcome =
      tree->document.load_buffer(text.data(), text.size(), kParseOptions, pugi::encoding_utf8);
  if (!outcome) {
    return {std::nullopt, {static_cast<int>(XmlFault::kParser), outcome.description(), 1, 1}};
  }
  return {XmlDocument(std::move(tree)), {}};
}

XmlElement XmlDocument::Root() const {
  return XmlElement(tree_->document.document_element().internal_object());
}

XmlElement XmlDocument::FirstByTagName(std::string_view name) const {
  return XmlElement(NextNamed(tree_->document, tree_->document, name).internal_object());
}

XmlDocument XmlDocument::ParseResult::OrFail() && {
  if (document) return *std::move(document);
  throw Failure(Failure::Kind::kDamaged, error.reason + " (line " + std::to_string(error.line) + ", column " +
                                             std::to_string(error.column) + ")");
}

}  // namespace platform
