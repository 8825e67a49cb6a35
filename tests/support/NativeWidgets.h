#pragma once

#include <wx/textctrl.h>

#include <string>
#include <vector>

namespace widget_test {

/// Turns the mouse wheel by one notch towards the user, wherever the mouse is.
void TurnWheel();

/// Number of the line, from 0, at the top of a text of several lines.
int FirstVisibleLine(const wxTextCtrl& memo);

/// Whether a text of several lines has a horizontal scroll bar, be it that it shows or that it would for a
/// wider text.
bool HasHorizontalBar(const wxTextCtrl& memo);

/// Takes down what the system's widgets would write on the terminal, while it lives; one at a time. Those of
/// Windows write nothing.
class ComplaintWatcher {
 public:
  ComplaintWatcher();
  ~ComplaintWatcher();
  ComplaintWatcher(const ComplaintWatcher&) = delete;
  ComplaintWatcher& operator=(const ComplaintWatcher&) = delete;

  const std::vector<std::string>& Complaints() const { return complaints_; }

 private:
  std::vector<std::string> complaints_;
};

}  // namespace widget_test
