#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pugi {
struct xml_node_struct;
}

namespace platform {

/// One element of an XmlDocument, or none. A handle: cheap to copy, good while its document lives and the
/// element has not been removed.
class XmlElement {
 public:
  XmlElement() = default;

  explicit operator bool() const { return node_ != nullptr; }
  bool operator==(const XmlElement&) const = default;

  /// Every operation below needs an element; on none, readers answer "" or nothing and writers throw
  /// Failure kInternal.
  std::string Name() const;
  std::optional<std::string> Attribute(std::string_view name) const;
  /// Adds the attribute at the end, or changes it in its place.
  void SetAttribute(std::string_view name, std::string_view value);
  /// Nothing happens where it is absent.
  void RemoveAttribute(std::string_view name);

  /// The text of the element and of all its descendants, in document order.
  std::string Text() const;
  /// Replaces all the element holds by one text. Throws Failure kRefused for a text that XML 1.0 cannot
  /// carry (control characters other than tab, line feed and carriage return; invalid UTF-8).
  void SetText(std::string_view text);

  /// The child elements in document order (texts and comments are no elements).
  std::vector<XmlElement> Children() const;
  /// The first descendant of that exact name in document order, or none; never the element itself.
  XmlElement FirstByTagName(std::string_view name) const;

  XmlElement AppendChild(std::string_view name);
  /// `child` and all it holds are gone afterwards.
  void RemoveChild(XmlElement child);

  /// The element as XML text, without a declaration and without added white space.
  std::string Xml() const;

 private:
  friend class XmlDocument;
  explicit XmlElement(pugi::xml_node_struct* node) : node_(node) {}
  pugi::xml_node_struct* node_ = nullptr;
};

/// Why a text is no XML, and where.
struct XmlParseError {
  int code = 0;          ///< never 0
  std::string reason;    ///< a sentence for the person
  std::size_t line = 0;  ///< counted from 1
  std::size_t column = 0;
};

/// An XML 1.0 document in memory, parsed without external resolution and without validation.
///
/// White space in texts is kept; line ends are normalised as XML 1.0, 2.11, asks.
class XmlDocument {
 public:
  /// An empty document with the given root element.
  explicit XmlDocument(std::string_view root_name);

  struct ParseResult;
  /// Never throws for a bad text. Refused, besides what is not well formed: invalid UTF-8, control
  /// characters, several roots or text outside the root, duplicate attributes, references to undeclared
  /// entities, a DOCTYPE, elements nested deeper than 256.
  static ParseResult Parse(std::string_view text);

  XmlDocument(XmlDocument&&) noexcept;
  XmlDocument& operator=(XmlDocument&&) noexcept;
  ~XmlDocument();

  XmlElement Root() const;
  /// The first element of that name in the whole document, the root included; or none.
  XmlElement FirstByTagName(std::string_view name) const;

 private:
  struct Tree;
  explicit XmlDocument(std::unique_ptr<Tree> tree);
  std::unique_ptr<Tree> tree_;
};

struct XmlDocument::ParseResult {
  std::optional<XmlDocument> document;  ///< absent exactly when there is an error
  XmlParseError error;

  /// The document; throws Failure kDamaged with reason and place where the text did not parse.
  XmlDocument OrFail() &&;
};

}  // namespace platform
