#include "ui/wx/MessageBox.h"

#include <wx/msgdlg.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>

namespace kxbench {
namespace {

wxString Title(MessageKind kind) {
  switch (kind) {
    case MessageKind::Warning:
      return wxString::FromUTF8("Warnung");
    case MessageKind::Error:
      return wxString::FromUTF8("Fehler");
    case MessageKind::Information:
      break;
  }
  return wxString::FromUTF8("Information");
}

long IconStyle(MessageKind kind) {
  switch (kind) {
    case MessageKind::Warning:
      return wxICON_WARNING;
    case MessageKind::Error:
      return wxICON_ERROR;
    case MessageKind::Information:
      break;
  }
  return wxICON_INFORMATION;
}

wxString Caption(int result) {
  switch (result) {
    case mrOk:
      return wxString::FromUTF8("OK");
    case mrCancel:
      return wxString::FromUTF8("Abbrechen");
    case mrAbort:
      return wxString::FromUTF8("Abbruch");
    case mrIgnore:
      return wxString::FromUTF8("Ignorieren");
    default:
      throw std::invalid_argument("no caption for the message box button " + std::to_string(result));
  }
}

// What closing the box answers.
int CloseResult(const std::vector<int>& buttons) {
  if (buttons.empty() || buttons.size() > 3) {
    throw std::invalid_argument("a message box has one to three buttons");
  }
  const bool hasCancel = std::find(buttons.begin(), buttons.end(), mrCancel) != buttons.end();
  return hasCancel ? mrCancel : buttons.back();
}

// The native box knows buttons by role, not by number. The button that closing answers takes the cancel role,
// the others the roles left over.
class NativeButtons {
 public:
  explicit NativeButtons(const std::vector<int>& buttons) : closeResult_(CloseResult(buttons)) {
    if (buttons.size() == 1) {
      roles_.push_back({wxID_OK, buttons[0]});
      return;
    }
    const std::array<int, 2> affirmative{buttons.size() == 2 ? wxID_OK : wxID_YES, wxID_NO};
    std::size_t next = 0;
    for (const int result : buttons) {
      roles_.push_back({result == closeResult_ ? wxID_CANCEL : affirmative[next++], result});
    }
  }

  long Style() const {
    const int defaultRole = roles_.front().id;
    // The highest bit of the style: not a positive long everywhere.
    const long defaultStyle = defaultRole == wxID_CANCEL ? static_cast<long>(wxCANCEL_DEFAULT)
                              : defaultRole == wxID_NO   ? wxNO_DEFAULT
                                                         : 0;
    if (roles_.size() == 1) return wxOK;
    return (roles_.size() == 2 ? wxOK | wxCANCEL : wxYES_NO | wxCANCEL) | defaultStyle;
  }

  void SetLabels(wxMessageDialog& box) const {
    if (roles_.size() == 1) {
      box.SetOKLabel(CaptionOf(wxID_OK));
    } else if (roles_.size() == 2) {
      box.SetOKCancelLabels(CaptionOf(wxID_OK), CaptionOf(wxID_CANCEL));
    } else {
      box.SetYesNoCancelLabels(CaptionOf(wxID_YES), CaptionOf(wxID_NO), CaptionOf(wxID_CANCEL));
    }
  }

  int ResultOf(int id) const {
    for (const Role& role : roles_) {
      if (role.id == id) return role.result;
    }
    return closeResult_;
  }

 private:
  struct Role {
    int id;
    int result;
  };

  wxString CaptionOf(int id) const { return Caption(ResultOf(id)); }

  std::vector<Role> roles_;
  int closeResult_;
};

int openBoxes = 0;

struct OpenBox {
  OpenBox() { ++openBoxes; }
  ~OpenBox() { --openBoxes; }
  OpenBox(const OpenBox&) = delete;
  OpenBox& operator=(const OpenBox&) = delete;
};

}  // namespace

bool MessageBoxIsOpen() { return openBoxes > 0; }

int ShowMessageBox(const MessageBoxRequest& request) {
  const NativeButtons buttons(request.buttons);
  wxMessageDialog box(nullptr, wxString::FromUTF8(request.text), Title(request.kind),
                      buttons.Style() | IconStyle(request.kind) | wxCENTRE);
  buttons.SetLabels(box);
  const OpenBox open;
  return buttons.ResultOf(box.ShowModal());
}

}  // namespace kxbench
