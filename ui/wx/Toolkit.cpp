#include "ui/wx/Toolkit.h"

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

#include <clocale>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>

#include "ui/wx/MessageBox.h"

namespace kxbench {
namespace {

void ShowError(const std::string& text) {
  MessageBoxRequest request;
  request.text = text;
  request.kind = MessageKind::Error;
  ShowMessageBox(request);
}

class Application : public wxApp {
 public:
  bool OnInit() override {
    SetExitOnFrameDelete(false);  // the host decides when the program ends
    return true;
  }

  // No error that escapes an event handler ends the program.
  bool OnExceptionInMainLoop() override {
    try {
      throw;
    } catch (const std::exception& error) {
      ShowError(error.what());
    } catch (...) {
      ShowError("Unbekannter Fehler");
    }
    return true;
  }
};

// Starting the toolkit makes the user's locale that of the process. Numbers are the host's business.
class NumericLocaleKeeper {
 public:
  NumericLocaleKeeper() : numeric_(std::setlocale(LC_NUMERIC, nullptr)) {}
  ~NumericLocaleKeeper() { std::setlocale(LC_NUMERIC, numeric_.c_str()); }
  NumericLocaleKeeper(const NumericLocaleKeeper&) = delete;
  NumericLocaleKeeper& operator=(const NumericLocaleKeeper&) = delete;

 private:
  std::string numeric_;
};

bool Start() {
  const NumericLocaleKeeper keeper;
  const wxLogNull quiet;  // the caller reports the failure
#ifdef __WXGTK__
  // Scroll bars that show only under a moving mouse let what is cut off look complete.
  setenv("GTK_OVERLAY_SCROLLING", "0", /*overwrite=*/0);
#endif
  int noArguments = 0;
  wxApp::SetInstance(new Application);
  return wxEntryStart(noArguments, static_cast<wxChar**>(nullptr));
}

}  // namespace

Toolkit::Toolkit() {
  if (!Start()) throw std::runtime_error("no display can be reached");
  if (!wxTheApp->CallOnInit()) {
    wxEntryCleanup();
    throw std::runtime_error("the toolkit cannot be started");
  }
  loop_ = std::make_unique<wxEventLoop>();
  activator_ = std::make_unique<wxEventLoopActivator>(loop_.get());
}

Toolkit::~Toolkit() {
  wxTheApp->OnExit();
  activator_.reset();
  loop_.reset();
  wxEntryCleanup();
}

// Not the toolkit's own way to yield: that does nothing when it is already under way further up, and a
// procedure started from there would run without a user.
void Toolkit::DispatchPendingEvents() {
  wxEventLoopBase& loop = *wxEventLoopBase::GetActive();
  while (loop.Pending()) loop.Dispatch();
  wxTheApp->ProcessPendingEvents();
  loop.ProcessIdle();
}

}  // namespace kxbench
