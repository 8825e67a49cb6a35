#include "bench/documents/ReadDocument.h"

#include <algorithm>
#include <array>
#include <utility>

#include "bench/documents/CsvScanner.h"
#include "bench/documents/KblReader.h"
#include "bench/documents/WireVizReader.h"
#include "bench/documents/WiringJsonReader.h"
#include "bench/documents/WiringListReader.h"
#include "bench/documents/WiringTable.h"
#include "text/FileAccess.h"
#include "text/Lines.h"
#include "text/Trim.h"

namespace kxbench::documents {

namespace {

std::string BytesOf(const std::string& file) {
  return shorttest::ReadWholeFile(shorttest::AbsolutePath(file), MostDocumentBytes,
                                  shorttest::ReadFrom::Anything);
}

/// The bytes as they begin, without a byte order mark and the zeros of UTF-16.
std::string Beginning(std::string_view bytes) {
  constexpr std::size_t Enough = 64;
  std::string text =
      DocumentTextToUtf8(std::string(bytes.substr(0, bytes.size() < Enough ? bytes.size() : Enough)));
  return std::string(shorttest::Trim(text));
}

bool IsWireVizLine(std::string_view line) {
  static constexpr auto Words = std::to_array<std::string_view>({"connectors", "cables", "connections"});
  return std::any_of(Words.begin(), Words.end(), [line](std::string_view word) {
    return line.starts_with(word) && shorttest::Trim(line.substr(word.size())).starts_with(':');
  });
}

Pin WithoutUnnamedConnector(const Pin& pin) {
  return pin.connector == UnnamedConnector && IsNumber(pin.pin) ? Pin{"", pin.pin} : pin;
}

/// Gives the channels that an export put on the unnamed connector back as what they are.
void TakeBackUnnamed(WiringDocument& document) {
  for (PlacedPin& pin : document.pins) pin.pin = WithoutUnnamedConnector(pin.pin);
  for (DocumentNet& net : document.nets) {
    for (Pin& pin : net.pins) pin = WithoutUnnamedConnector(pin);
  }
}

WiringDocument ReadYaml(const DocumentRequest& request, std::string text) {
  WireVizSources sources;
  for (const std::string& file : request.prepend) {
    sources.files.emplace_back(file, DocumentTextToUtf8(BytesOf(file)));
  }
  sources.files.emplace_back(request.file, DocumentTextToUtf8(std::move(text)));
  WiringDocument document = ReadWireViz(sources);
  TakeBackUnnamed(document);
  return document;
}

}  // namespace

DocumentFormat FormatOf(std::string_view bytes) {
  const std::string beginning = Beginning(bytes);
  if (beginning.starts_with('<')) return DocumentFormat::Kbl;
  if (beginning.starts_with('{')) return DocumentFormat::Json;
  const std::string utf8 = DocumentTextToUtf8(std::string(bytes));
  std::string_view rest = utf8;
  while (!rest.empty()) {
    if (IsWireVizLine(shorttest::TakeLine(rest).text)) return DocumentFormat::WireViz;
  }
  return DocumentFormat::Csv;
}

bool IsExpectation(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view line = shorttest::Trim(shorttest::TakeLine(bytes).text);
    if (line.starts_with("[BEREICH]") || line.starts_with("[DATEN]")) return true;
  }
  return false;
}

DocumentRead ReadDocument(const DocumentRequest& request) {
  std::string text = BytesOf(request.file);
  DocumentRead read;
  read.format = request.from ? *request.from : FormatOf(text);
  if (!request.prepend.empty() && read.format != DocumentFormat::WireViz) {
    throw DocumentError({request.file}, "this is no WireViz file, so nothing can be put in front of it");
  }
  switch (read.format) {
    case DocumentFormat::WireViz:
      read.document = ReadYaml(request, std::move(text));
      break;
    case DocumentFormat::Kbl:
      read.document = ReadKbl(request.file, std::move(text));
      break;
    case DocumentFormat::Json: {
      MappedDocument mapped = ReadWiringJson(request.file, DocumentTextToUtf8(std::move(text)));
      read.document = std::move(mapped.document);
      read.ownMap = std::move(mapped.map);
      break;
    }
    case DocumentFormat::Csv:
      read.document = ReadWiringList(request.file, text, {request.columns});
      if (!request.columns && request.wantsOwnMap) read.ownMap = MapInList(request.file, std::move(text));
      break;
  }
  if (read.document.pins.empty()) throw DocumentError({request.file}, "the document has no pins");
  if (!read.ownMap && request.wantsOwnMap) read.ownMap = MapOfNumbers(read.document);
  return read;
}

}  // namespace kxbench::documents
