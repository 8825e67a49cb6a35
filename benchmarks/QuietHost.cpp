#include "benchmarks/QuietHost.h"

#include "framework/kxcomponents.h"
#include "plugin/check/ResultRecords.h"

namespace {

class UnseenDialog : public ProgressDialog {
 public:
  explicit UnseenDialog(int maximum) : maximum_(maximum) {}
  void Show() override { visible_ = true; }
  bool Visible() const override { return visible_; }
  int GetModalResult() const override { return mrNone; }
  int BarMaximum() const override { return maximum_; }
  void SetBarPosition(int /*position*/) override {}
  WindowHandle Handle() const override { return 0; }

 private:
  int maximum_;
  bool visible_ = false;
};

}  // namespace

QuietHost::QuietHost()
    : window_([this](UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) -> LRESULT {
        ++records_;
        return 0;
      }) {
  SetApplication(this);
  shorttest::SetMessageWindowHandle(
      static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window_.Handle())));
}

QuietHost::~QuietHost() {
  shorttest::SetMessageWindowHandle(0);
  SetApplication(nullptr);
}

std::unique_ptr<ProgressDialog> QuietHost::CreateProgressDialog(const ProgressDialogLayout& layout) {
  return std::make_unique<UnseenDialog>(layout.barMaximum);
}
