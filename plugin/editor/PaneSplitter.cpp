#include "plugin/editor/PaneSplitter.h"

#include <algorithm>

#include "plugin/editor/DesignScale.h"

namespace shorttest {
namespace {

constexpr int SmallestPane = 40;

// Until the layout gives the real one: of a scroll bar without room for it the toolkit complains on the
// terminal.
constexpr int FirstExtent = 800;

}  // namespace

PaneSplitter::PaneSplitter(wxWindow* parent)
    : wxSplitterWindow(parent, wxID_ANY, wxDefaultPosition, wxSize(FirstExtent, FirstExtent),
                       wxSP_LIVE_UPDATE | wxSP_NOBORDER) {
  // Before the toolkit fits the sash into the new size: that leaves a sash alone that fits already, and tells
  // of no change. What it tells of is the user's doing.
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    LimitPanes();
    SetSashPosition(wanted_);
    event.Skip();
  });
  Bind(wxEVT_SPLITTER_SASH_POS_CHANGED, [this](wxSplitterEvent& event) {
    wanted_ = event.GetSashPosition();
    event.Skip();
  });
}

void PaneSplitter::SetPanesSideBySide(wxWindow* left, wxWindow* right, int firstExtent) {
  wanted_ = firstExtent;
  SplitVertically(left, right, firstExtent);
}

void PaneSplitter::SetPanesOnTopOfEachOther(wxWindow* upper, wxWindow* lower, int firstExtent) {
  wanted_ = firstExtent;
  SplitHorizontally(upper, lower, firstExtent);
}

// The toolkit leaves a sash where it was, beyond the edge, when there is no room for two of the smallest
// panes: they give way. Not in a window that has no real size yet.
void PaneSplitter::LimitPanes() {
  const int smallest = Scaled(*this, SmallestPane);
  const wxSize size = GetClientSize();
  const int extent = GetSplitMode() == wxSPLIT_VERTICAL ? size.x : size.y;
  SetMinimumPaneSize(std::clamp((extent - GetSashSize()) / 2, smallest / 2, smallest));
}

}  // namespace shorttest
