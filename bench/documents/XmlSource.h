#pragma once

#include <deque>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "bench/documents/TextPlaces.h"
#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// An XML file that is parsed in its own text, without a copy. Element names are compared without the prefix
/// of their namespace.
class XmlSource {
 public:
  /// Throws DocumentError for what is no XML, for encodings that are not read (see XmlToUtf8), and for a
  /// document type that is more than a name: nothing is fetched, and no entity of a file's own is expanded.
  XmlSource(const std::string& fileName, std::string text);
  XmlSource(const XmlSource&) = delete;
  XmlSource& operator=(const XmlSource&) = delete;

  /// The outermost element.
  pugi::xml_node Root() const { return root_; }

  /// Where an element begins.
  Place PlaceOf(pugi::xml_node element) const;

  /// An element's text without blanks at its ends, entities replaced. Throws DocumentError for an entity that
  /// XML does not define.
  std::string TextOf(pugi::xml_node element) const;

  /// What TextOf gives, for references: the file's own text where it stands there in one piece, else a copy.
  /// The view lives as long as this.
  std::string_view ReferenceIn(pugi::xml_node element) const;

  /// The attribute "id", without blanks at its ends, entities replaced; empty when it is missing. The view
  /// lives as long as this. Throws as TextOf does.
  std::string_view IdOf(pugi::xml_node element) const;

  /// The text of the first child of that name; empty when there is none.
  std::string ChildText(pugi::xml_node element, std::string_view name) const;

 private:
  Place PlaceAt(std::size_t offset) const;
  void AppendWithEntities(pugi::xml_node element, std::string_view raw, std::string& text) const;
  void CheckDocumentType() const;

  std::string fileName_;
  std::string text_;
  TextPlaces places_;
  pugi::xml_document document_;
  pugi::xml_node root_;
  mutable std::deque<std::string> own_;  // texts that do not stand in the file as they are meant
};

/// An element's name without the prefix of its namespace.
std::string_view XmlName(pugi::xml_node element);

/// The first child of that name, whatever its prefix.
pugi::xml_node XmlChild(pugi::xml_node element, std::string_view name);

}  // namespace kxbench::documents
