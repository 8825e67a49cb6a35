#pragma once

#include "plugin/editor/EditorControls.h"
#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GridView.h"

namespace shorttest {

class DataFileEdit;
class HelpButton;

/// Everything that is laid out: the window, the named controls to fill in, and what paints and describes the
/// grid's cells.
struct EditorLayout {
  EditorDialog& dialog;
  EditorControls& controls;
  DataFileEdit& dataFileEdit;
  HelpButton& helpButton;
  GridView::CellPainter cellPainter;
  GridView::CellDescriber cellDescriber;
};

/// Makes all controls of the dialog with their captions, limits and initial content, and arranges them.
void LayOutEditor(const EditorLayout& layout);

/// Its parts: the column of parameters, the pages with the connections, the bar at the bottom. Each returns
/// what the whole is arranged of.
wxWindow* LayOutParameters(wxWindow& parent, const EditorLayout& layout);
wxWindow* LayOutPages(wxWindow& parent, const EditorLayout& layout);
wxWindow* LayOutBottomBar(wxWindow& parent, const EditorLayout& layout);

/// Room for `LabelWarning`: its text is broken into lines that fit.
void ShowWarning(wxStaticText& label, const wxString& text);

}  // namespace shorttest
