#include "plugin/editor/FittingColumn.h"

#include <wx/settings.h>

#include <algorithm>

#include "plugin/editor/DesignScale.h"

namespace shorttest {
namespace {

constexpr int Gap = 8;
constexpr int SmallestGap = 2;

}  // namespace

FittingColumn::FittingColumn(wxWindow& parent)
    : wxScrolledWindow(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxVSCROLL | wxTAB_TRAVERSAL),
      rows_(new wxBoxSizer(wxVERTICAL)) {
  SetSizer(rows_);
}

void FittingColumn::AddGap() { gaps_.push_back(rows_->AddSpacer(Scaled(*this, Gap))); }

void FittingColumn::Finish(int width) {
  width_ = std::max(rows_->GetMinSize().x, width);
  SetScrollRate(0, Scaled(*this, Gap));
  SetMinSize(wxSize(width_, -1));
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    FitToHeight();
    event.Skip();
  });
  for (wxWindow* const control : GetChildren()) {
    control->Bind(wxEVT_MOUSEWHEEL, [this, control](wxMouseEvent& event) {
      if (control->HasFocus()) {
        event.Skip();
      } else {
        HandleOnMouseWheel(event);
      }
    });
  }
}

void FittingColumn::FitToHeight() {
  const int gaps = std::max<int>(1, static_cast<int>(gaps_.size()));
  for (wxSizerItem* const gap : gaps_) gap->AssignSpacer(0, 0);
  const int room = (GetSize().y - rows_->CalcMin().y) / gaps;
  const int gapHeight = std::clamp(room, Scaled(*this, SmallestGap), Scaled(*this, Gap));
  for (wxSizerItem* const gap : gaps_) gap->AssignSpacer(0, gapHeight);
  FitInside();

  const bool scrolls = room < gapHeight;
  const int width = width_ + (scrolls ? wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this) : 0);
  if (width == GetMinSize().x) return;
  SetMinSize(wxSize(width, -1));
  // The columns beside it are being arranged just now.
  CallAfter([this] { GetParent()->Layout(); });
}

}  // namespace shorttest
