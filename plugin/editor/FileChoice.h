#pragma once

#include <optional>
#include <string>

class wxWindow;

namespace shorttest {

/// What a dialog for the name of a data file starts from; UTF-8 names.
struct FileChoice {
  std::string directory;  ///< where the name is no absolute one; empty: where the system likes
  std::string fileName;   ///< may be empty, relative or absolute
};

/// Lets the user choose an existing file that can be written: the one of that name, or else the one with the
/// extension "dat" added to it. Says why another cannot be opened, and lets the user choose again. No value
/// when the user cancels. The current directory stays.
std::optional<std::string> ChooseFileToOpen(wxWindow& parent, const FileChoice& start);

/// Lets the user choose a file to write, in a directory that exists; asks before an existing one is
/// overwritten and refuses one that is read-only. A name without an extension gets "dat", but for that of an
/// existing file. No value when the user cancels. The current directory stays.
std::optional<std::string> ChooseFileToSave(wxWindow& parent, const FileChoice& start);

}  // namespace shorttest
