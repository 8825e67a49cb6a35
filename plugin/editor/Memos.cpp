#include "plugin/editor/Memos.h"

#include <wx/utils.h>

#include <memory>
#include <utility>

#ifdef __WXMSW__
#include <wx/msw/wrapwin.h>
#else
#include <dlfcn.h>
#endif

namespace shorttest {
namespace {

constexpr long MemoStyle = wxTE_MULTILINE | wxTE_DONTWRAP;

#ifdef __WXMSW__

// The system's edit scrolls sideways without a bar when it is made without one. Taken away later, the bar
// comes back.
class MemoWithoutBar : public wxTextCtrl {
 public:
  explicit MemoWithoutBar(wxWindow* parent) {
    Create(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, MemoStyle);
  }

  WXDWORD MSWGetStyle(long flags, WXDWORD* extendedStyle) const override {
    return (wxTextCtrl::MSWGetStyle(flags, extendedStyle) & ~static_cast<WXDWORD>(WS_HSCROLL)) |
           ES_AUTOHSCROLL;
  }
};

wxTextCtrl* NewMemoWithoutBar(wxWindow* parent) { return new MemoWithoutBar(parent); }

int ScrolledTo(const wxTextCtrl& memo) {
  return static_cast<int>(SendMessageW(memo.GetHWND(), EM_GETFIRSTVISIBLELINE, 0, 0));
}

void ScrollTo(const wxTextCtrl& memo, int position) {
  SendMessageW(memo.GetHWND(), EM_LINESCROLL, 0, position - ScrolledTo(memo));
}

#else

// The toolkit can only wrap the lines or show the bar; the one below it can do without both. Its headers are
// not needed elsewhere: the function is looked up in the running program.
wxTextCtrl* NewMemoWithoutBar(wxWindow* parent) {
  constexpr int Automatic = 1;
  constexpr int External = 3;  // scrolls without a bar
  auto* const memo = new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, MemoStyle);
  using SetPolicy = void (*)(void* scrolledWindow, int horizontal, int vertical);
  const auto setPolicy = reinterpret_cast<SetPolicy>(dlsym(RTLD_DEFAULT, "gtk_scrolled_window_set_policy"));
  if (setPolicy != nullptr) setPolicy(memo->GetHandle(), External, Automatic);
  return memo;
}

int ScrolledTo(const wxTextCtrl& memo) { return memo.GetScrollPos(wxVERTICAL); }

void ScrollTo(wxTextCtrl& memo, int position) { memo.SetScrollPos(wxVERTICAL, position); }

#endif

// The one of two memos that the user touched last leads. Looks in every quiet moment instead of following the
// scrolling itself: keys, wheel, bar, caret and program scroll a text, not all of it is told, and a text that
// the program replaces goes to its top a moment later.
class Pair {
 public:
  Pair(wxTextCtrl& leader, wxTextCtrl& follower) : leader_(&leader), follower_(&follower) {}

  void Lead(wxTextCtrl& memo) {
    if (follower_ == &memo) std::swap(leader_, follower_);
  }

  void Align() {
    // The bars tell nothing of the mouse.
    if (const wxMouseState mouse = wxGetMouseState(); mouse.LeftIsDown()) {
      if (follower_->GetScreenRect().Contains(mouse.GetPosition())) Lead(*follower_);
    }
    const int position = ScrolledTo(*leader_);
    if (ScrolledTo(*follower_) != position) ScrollTo(*follower_, position);
  }

 private:
  wxTextCtrl* leader_;
  wxTextCtrl* follower_;
};

}  // namespace

wxTextCtrl* MakeMemo(wxWindow* parent, long style) {
  auto* const memo =
      new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, MemoStyle | style);
  memo->SetMinSize(wxSize(1, 1));
  return memo;
}

wxTextCtrl* MakeMemoWithoutHorizontalBar(wxWindow* parent) {
  wxTextCtrl* const memo = NewMemoWithoutBar(parent);
  memo->SetMinSize(wxSize(1, 1));
  return memo;
}

void ScrollTogether(wxTextCtrl& leader, wxTextCtrl& follower) {
  const auto pair = std::make_shared<Pair>(leader, follower);
  for (wxTextCtrl* const memo : {&leader, &follower}) {
    const auto lead = [pair, memo](wxEvent& event) {
      pair->Lead(*memo);
      event.Skip();
    };
    memo->Bind(wxEVT_SET_FOCUS, lead);
    memo->Bind(wxEVT_KEY_DOWN, lead);
    memo->Bind(wxEVT_MOUSEWHEEL, lead);
  }
  leader.Bind(wxEVT_IDLE, [pair](wxIdleEvent& event) {
    pair->Align();
    event.Skip();
  });
}

}  // namespace shorttest
