#include "bench/program/host/CommonOptions.h"

namespace kxbench {

namespace {

constexpr ChoiceWord<ProgressChoice> ProgressWords[] = {{"auto", ProgressChoice::Auto},
                                                        {"terminal", ProgressChoice::Terminal},
                                                        {"window", ProgressChoice::Window},
                                                        {"none", ProgressChoice::None}};

}  // namespace

void CommonOptions::DeclareIn(OptionList& list) {
  list.Value("--plugin", "PATH", "Plug-in library (default: ShortTest beside the program)", plugin).listed =
      false;
  list.Value("--device", "FILE", "Device description that the simulated tester loads", device).listed = false;
  list.Value("--project", "DIR/NAME", "Project folder and name (default: current folder, FILE's name)",
             project)
      .listed = false;
  list.Words("--progress", ProgressWords, "Where progress is shown (auto: terminal)", progress).listed =
      false;
}

}  // namespace kxbench
