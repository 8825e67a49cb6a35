#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "bench/documents/ChannelMap.h"
#include "bench/documents/ReadDocument.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/host/OptionList.h"
#include "bench/program/system/ExitStatus.h"

namespace kxbench {

/// What every command takes that reads a harness's document.
class DocumentOptions {
 public:
  void DeclareIn(OptionList& list);

  /// Reads the document `file`; splices that --splices names have joined their wires. Throws what reading
  /// throws, and Failure for splices that it does not have.
  documents::DocumentRead Read(const std::string& file, bool wantsOwnMap) const;

  /// The files that are read in front of the document.
  const std::vector<std::string>& Prepended() const { return prepend_; }

 private:
  std::optional<documents::DocumentFormat> from_;
  std::optional<std::string> columns_;
  std::vector<std::string> prepend_;
  std::set<std::string> splices_;
};

/// The map in the file `name`. Throws as documents::ReadChannelMap does.
documents::ChannelMap MapInFile(const std::string& name);

/// Takes connectors that the map does not know for splices, and warns of those with several pins of their
/// own. A map that knows none of them changes nothing: it is the map of something else.
void JoinUnmapped(documents::WiringDocument& document, const documents::ChannelMap& map);

/// Tells the document's warnings, the first of many.
void TellWarnings(const documents::WiringDocument& document, Interaction& interaction);

/// Does `work`. When a map does not fit (documents::MapError), tells each of its faults and answers Failed.
ExitStatus TellingMapFaults(Interaction& interaction, const std::function<ExitStatus()>& work);

/// What the format is called.
std::string FormatText(documents::DocumentFormat format);

}  // namespace kxbench
