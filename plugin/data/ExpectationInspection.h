#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace shorttest {

/// What can be said of an expectation file before it is trusted. The reader takes any file as it stands, see
/// docs/expectation-file.md; this says how much of what it then holds was really in the file.
///
/// An undamaged file has a readable range of at least one channel, nothing missing or unreadable, a block, as
/// many whole rows as channels and no strange cell. The reverse does not hold: a digit that has become
/// another state cannot be noticed.
struct ExpectationInspection {
  bool startReadable = false;  ///< the key START is there and its value is an integer as a whole
  bool endReadable = false;    ///< the same for ENDE
  std::int32_t von = 0;        ///< the range as the reader takes it: the default for what is not readable
  std::int32_t bis = 0;
  std::vector<std::string> missingKeys;  ///< of the nine keys those that are not there, in the file's order
  std::vector<std::string> unreadableKeys;  ///< those whose value is not of its type as a whole
  bool hasBlock = false;                    ///< a line contains [DATEN]

  /// Of the first N lines of the block (N channels in the range) those of exactly N states (0 to 4, 8 or 9);
  /// blanks at the end of a line do not count.
  std::int32_t wholeRows = 0;

  // What the reader makes of the block, cell by cell. All 0 for a range that it refuses (more than
  // TShortTestData::MaxChannels).

  /// Cells that are no state where they stand: below the diagonal anything but 0 to 4, and a 4 where neither
  /// channel is suspended; on the diagonal anything but 8 and 9; above it anything but 8.
  std::int64_t strangeCells = 0;
  std::int64_t unknownPairs = 0;
  std::int64_t connectedPairs = 0;
  std::int64_t excludedPairs = 0;
  std::int64_t suspendedChannels = 0;
};

/// Inspects the expectation file `utf8Path` (relative names are taken against the current directory). Changes
/// nothing. Throws std::system_error naming the file when it cannot be opened or read; no content is refused.
ExpectationInspection InspectExpectationFile(const std::string& utf8Path);

/// The same for the content of a file.
ExpectationInspection InspectExpectationText(std::string_view content);

}  // namespace shorttest
