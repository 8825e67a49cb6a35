#pragma once

#include <string>

#include "contracts/UserInterface.h"

/// The check's progress dialog, under another caption.
inline ProgressDialogLayout ProgressLayout(const std::string& caption) {
  return {.caption = caption,
          .clientWidth = 166,
          .clientHeight = 73,
          .fontName = "Segoe UI",
          .fontHeight = -12,
          .bar = {8, 8, 150, 17},
          .barMinimum = 0,
          .barMaximum = 100,
          .button = {45, 40, 75, 25},
          .buttonCaption = "Abbrechen",
          .buttonResult = mrCancel};
}
