#include "bench/documents/XmlSource.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "bench/documents/NameText.h"
#include "bench/documents/XmlText.h"
#include "text/Trim.h"
#include "text/Utf8.h"

namespace kxbench::documents {

namespace {

/// Whether blanks stand alone somewhere between two comments, CDATA sections or the like: the parser leaves
/// them out unless it keeps all blanks between elements, which costs as much again as the rest.
bool HasLoneBlanks(std::string_view text) {
  const auto isMarkup = [text](std::size_t at) {
    return at + 1 < text.size() && (text[at + 1] == '!' || text[at + 1] == '?');
  };
  std::size_t at = text.find('<');
  while (at != std::string_view::npos && isMarkup(at)) at = text.find('<', at + 1);  // what precedes the root
  for (; at != std::string_view::npos; at = text.find('<', at + 1)) {
    if (at == 0 || !isMarkup(at)) continue;
    const std::size_t last = text.find_last_not_of(" \t\r\n", at - 1);
    if (last == std::string_view::npos || last == 0 || last + 1 == at || text[last] != '>') continue;
    if (std::string_view("-?]").find(text[last - 1]) != std::string_view::npos) return true;
  }
  return false;
}

/// The character that "#10" or "#xA" stands for; 0 for none.
char32_t NumberedCharacter(std::string_view entity) {
  entity.remove_prefix(1);
  const bool hexadecimal = entity.starts_with('x');
  if (hexadecimal) entity.remove_prefix(1);
  std::uint32_t code = 0;
  const char* const end = entity.data() + entity.size();
  const auto [stop, error] = std::from_chars(entity.data(), end, code, hexadecimal ? 16 : 10);
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (error != std::errc() || stop != end || code > 0x10FFFF || surrogate) return 0;
  return code;
}

char32_t CharacterOf(std::string_view entity) {
  if (entity == "lt") return U'<';
  if (entity == "gt") return U'>';
  if (entity == "amp") return U'&';
  if (entity == "quot") return U'"';
  if (entity == "apos") return U'\'';
  return entity.starts_with('#') ? NumberedCharacter(entity) : 0;
}

}  // namespace

XmlSource::XmlSource(const std::string& fileName, std::string text)
    : fileName_(fileName), text_(XmlToUtf8(fileName, std::move(text))), places_(text_) {
  if (const std::size_t at = FindControlCharacter(text_); at != std::string::npos) {
    throw DocumentError(PlaceAt(at), "a control character: this is no text");
  }
  // The texts are taken as they stand: what the parser would shift about in them, places would lose.
  const unsigned options =
      pugi::parse_cdata | pugi::parse_doctype | (HasLoneBlanks(text_) ? pugi::parse_ws_pcdata : 0U);
  const pugi::xml_parse_result result =
      document_.load_buffer_inplace(text_.data(), text_.size(), options, pugi::encoding_utf8);
  if (!result) {
    throw DocumentError(PlaceAt(static_cast<std::size_t>(result.offset)),
                        std::string("this is no XML: ") + result.description());
  }
  for (const pugi::xml_node node : document_.children()) {
    if (node.type() != pugi::node_element) continue;
    if (root_) throw DocumentError(PlaceOf(node), "this is no XML: a second outermost element");
    root_ = node;
  }
  CheckDocumentType();
}

void XmlSource::CheckDocumentType() const {
  for (const pugi::xml_node node : document_.children()) {
    if (node.type() != pugi::node_doctype) continue;
    const std::string_view type = shorttest::Trim(node.value());
    if (type.find_first_of(" \t\r\n[\"'") == std::string_view::npos) continue;
    const std::size_t at = text_.find("<!DOCTYPE");
    throw DocumentError(PlaceAt(at == std::string::npos ? 0 : at),
                        "the file has a document type with declarations or a link: entities are not read");
  }
}

Place XmlSource::PlaceAt(std::size_t offset) const {
  const auto [line, column] = places_.At(text_, offset);
  return {fileName_, line, column};
}

Place XmlSource::PlaceOf(pugi::xml_node element) const {
  const std::ptrdiff_t offset = element.offset_debug();  // of the name
  if (offset < 1) return {fileName_, 0, 0};
  return PlaceAt(static_cast<std::size_t>(offset) - 1);
}

std::string XmlSource::TextOf(pugi::xml_node element) const {
  std::string text;
  for (const pugi::xml_node child : element.children()) {
    if (child.type() == pugi::node_cdata) text += child.value();
    if (child.type() == pugi::node_pcdata) AppendWithEntities(element, child.value(), text);
  }
  return std::string(shorttest::Trim(text));
}

std::string XmlSource::ChildText(pugi::xml_node element, std::string_view name) const {
  return TextOf(XmlChild(element, name));
}

std::string_view XmlSource::ReferenceIn(pugi::xml_node element) const {
  const pugi::xml_node first = element.first_child();
  if (!first) return {};
  const std::string_view raw = first.value();
  const bool whole = first.type() == pugi::node_pcdata && !first.next_sibling();
  if (whole && raw.find('&') == std::string_view::npos) return shorttest::Trim(raw);
  return own_.emplace_back(TextOf(element));
}

std::string_view XmlSource::IdOf(pugi::xml_node element) const {
  const std::string_view raw = element.attribute("id").value();
  if (raw.find('&') == std::string_view::npos) return shorttest::Trim(raw);
  std::string id;
  AppendWithEntities(element, raw, id);
  return shorttest::Trim(own_.emplace_back(std::move(id)));
}

void XmlSource::AppendWithEntities(pugi::xml_node element, std::string_view raw, std::string& text) const {
  for (std::size_t at = raw.find('&'); at != std::string_view::npos; at = raw.find('&')) {
    text += raw.substr(0, at);
    raw.remove_prefix(at + 1);
    const std::size_t end = raw.find(';');
    const std::string_view entity = raw.substr(0, end);
    const char32_t character = end == std::string_view::npos ? U'\0' : CharacterOf(entity);
    if (character == 0) {
      throw DocumentError(PlaceOf(element), "the entity &" + ShownText(entity) +
                                                " is not known: only XML's own entities are read");
    }
    shorttest::AppendUtf8(text, character);
    raw.remove_prefix(end + 1);
  }
  text += raw;
}

std::string_view XmlName(pugi::xml_node element) {
  const std::string_view name = element.name();
  return name.substr(name.find(':') + 1);  // npos + 1 is 0
}

pugi::xml_node XmlChild(pugi::xml_node element, std::string_view name) {
  for (const pugi::xml_node child : element.children()) {
    if (XmlName(child) == name) return child;
  }
  return {};
}

}  // namespace kxbench::documents
