#include "plugin/editor/PaneSplitter.h"

#include "plugin/editor/DesignScale.h"

namespace shorttest {
namespace {

constexpr int SmallestPane = 40;

}  // namespace

PaneSplitter::PaneSplitter(wxWindow* parent)
    : wxSplitterWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_LIVE_UPDATE | wxSP_NOBORDER) {
  SetMinimumPaneSize(Scaled(*parent, SmallestPane));
  // Before the toolkit fits the sash into the new size: that leaves a sash alone that fits already, and tells
  // of no change. What it tells of is the user's doing.
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
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

}  // namespace shorttest
