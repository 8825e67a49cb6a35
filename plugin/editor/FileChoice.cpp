#include "plugin/editor/FileChoice.h"

#include <wx/filedlg.h>
#include <wx/filename.h>

#include <filesystem>
#include <system_error>

#include "framework/kxcomponents.h"
#include "text/FileAccess.h"

namespace shorttest {
namespace {

const char* const DefaultExtension = "dat";

// The file dialog, opened where the choice starts.
class Dialog {
 public:
  Dialog(wxWindow& parent, const wxString& title, const FileChoice& start, long style)
      : dialog_(&parent, title, "", "", wxFileSelectorDefaultWildcardStr, style) {
    const wxFileName name(wxString::FromUTF8(start.fileName));
    dialog_.SetDirectory(name.IsAbsolute() ? name.GetPath() : wxString::FromUTF8(start.directory));
    dialog_.SetFilename(name.GetFullName());
  }

  // The name as it was typed or chosen; empty when the user cancelled.
  wxFileName Choose() {
    return dialog_.ShowModal() == wxID_OK ? wxFileName(dialog_.GetPath()) : wxFileName();
  }

 private:
  wxFileDialog dialog_;
};

void Refuse(const wxFileName& name, const char* reason) {
  Application().ShowMessage({.text = name.GetFullPath().utf8_string() + "\n" + reason,
                             .kind = MessageKind::Warning,
                             .buttons = {mrOk}});
}

bool ConfirmsOverwriting(const wxFileName& name) {
  return Application().ShowMessage({.text = name.GetFullPath().utf8_string() +
                                            " existiert bereits.\nMöchten Sie die Datei ersetzen?",
                                    .kind = MessageKind::Warning,
                                    .buttons = {mrOk, mrCancel}}) == mrOk;
}

// Marked so, or not this user's to write: the super-user, who may write everything, respects the mark too.
bool IsReadOnly(const wxFileName& name) {
  if (!name.FileExists()) return false;
  using std::filesystem::perms;
  std::error_code ignored;
  const auto mode =
      std::filesystem::status(AbsolutePath(name.GetFullPath().utf8_string()), ignored).permissions();
  return (mode & (perms::owner_write | perms::group_write | perms::others_write)) == perms::none ||
         !name.IsFileWritable();
}

wxFileName WithDefaultExtension(const wxFileName& name) {
  return wxFileName(name.GetFullPath() + "." + DefaultExtension);
}

// True when the file can be opened; else the user has been told why not.
bool CanOpen(const wxFileName& name) {
  if (!name.FileExists()) {
    Refuse(name, "Die Datei wurde nicht gefunden.");
  } else if (IsReadOnly(name)) {
    Refuse(name, "Die Datei ist schreibgeschützt.");
  } else {
    return true;
  }
  return false;
}

bool CanSave(const wxFileName& name, bool askAgain) {
  if (!name.DirExists()) {
    Refuse(name, "Das Verzeichnis wurde nicht gefunden.");
  } else if (IsReadOnly(name)) {
    Refuse(name, "Die Datei ist schreibgeschützt.");
  } else {
    return !askAgain || !name.FileExists() || ConfirmsOverwriting(name);
  }
  return false;
}

}  // namespace

// Not left to the file dialog to find out whether the file exists: it looks for the name without its
// extension alone, and refuses that of a file that is there.
std::optional<std::string> ChooseFileToOpen(wxWindow& parent, const FileChoice& start) {
  Dialog dialog(parent, wxString::FromUTF8("Öffnen"), start, wxFD_OPEN);
  for (;;) {
    wxFileName name = dialog.Choose();
    if (!name.IsOk()) return std::nullopt;
    if (!name.FileExists() && WithDefaultExtension(name).FileExists()) name = WithDefaultExtension(name);
    if (CanOpen(name)) return name.GetFullPath().utf8_string();
  }
}

std::optional<std::string> ChooseFileToSave(wxWindow& parent, const FileChoice& start) {
  Dialog dialog(parent, wxString::FromUTF8("Speichern unter"), start, wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  for (;;) {
    wxFileName name = dialog.Choose();
    if (!name.IsOk()) return std::nullopt;
    // The dialog has asked about the name as it is, not about the one that gets an extension.
    const bool addsExtension = !name.HasExt() && !name.FileExists();
    if (addsExtension) name = WithDefaultExtension(name);
    if (CanSave(name, addsExtension)) return name.GetFullPath().utf8_string();
  }
}

}  // namespace shorttest
