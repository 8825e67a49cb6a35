#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/documents/ChannelMap.h"
#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

enum class DocumentFormat { Csv, WireViz, Kbl, Json };

/// In WireViz a pin is always on a connector. Channels of the tester that have no name are the pins of this
/// one.
inline constexpr const char* UnnamedConnector = "tester-channel";

/// Most bytes of a document.
inline constexpr std::uintmax_t MostDocumentBytes = std::uintmax_t{256} << 20U;

struct DocumentRequest {
  std::string file;                    ///< UTF-8
  std::optional<DocumentFormat> from;  ///< found out from the content when not given
  std::vector<std::string> prepend;    ///< WireViz files in front
  std::optional<std::string> columns;  ///< of a wiring list, see ReadWiringTable
  bool wantsOwnMap = true;             ///< whether DocumentRead::ownMap is asked for
};

struct DocumentRead {
  WiringDocument document;
  DocumentFormat format = DocumentFormat::Csv;
  std::optional<ChannelMap> ownMap;  ///< where the document itself says which pin is on which channel
};

/// What a file's content looks like: "<" begins KBL, "{" JSON; WireViz has a line that begins with one of its
/// chief words; else it is a wiring list.
DocumentFormat FormatOf(std::string_view bytes);

/// Whether a file's content is an expectation rather than a document.
bool IsExpectation(std::string_view bytes);

/// Reads a document. Throws DocumentError, also for one without pins; FileError for what cannot be read;
/// MapError for a list's own channels.
DocumentRead ReadDocument(const DocumentRequest& request);

}  // namespace kxbench::documents
