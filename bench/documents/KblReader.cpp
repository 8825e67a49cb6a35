#include "bench/documents/KblReader.h"

#include <utility>

#include "bench/documents/KblHarness.h"
#include "bench/documents/KblParts.h"
#include "bench/documents/NameText.h"
#include "bench/documents/WiringBuilder.h"
#include "bench/documents/XmlSource.h"

namespace kxbench::documents {

WiringDocument ReadKbl(const std::string& fileName, std::string text) {
  const XmlSource source(fileName, std::move(text));
  const pugi::xml_node root = source.Root();
  if (XmlName(root) != "KBL_container") {
    throw DocumentError(source.PlaceOf(root), "this is no KBL: the outermost element is " +
                                                  ShownText(root.name()) + ", not KBL_container");
  }

  KblParts parts(source);
  for (const pugi::xml_node child : root.children()) {
    if (XmlName(child) == "Connector_housing") parts.AddHousing(child);
    if (XmlName(child) == "Component_box") parts.AddBox(child);
  }

  WiringBuilder builder;
  KblHarness harness(source, parts, builder);
  pugi::xml_node first;
  for (const pugi::xml_node child : root.children()) {
    if (XmlName(child) != "Harness") continue;
    harness.Add(child);
    if (!first) first = child;
  }
  if (!first) throw DocumentError(source.PlaceOf(root), "there is no Harness in the document");
  harness.Finish();
  WiringDocument document = builder.Take();
  if (document.pins.empty()) throw DocumentError(source.PlaceOf(first), "the document has no pins");
  return document;
}

}  // namespace kxbench::documents
