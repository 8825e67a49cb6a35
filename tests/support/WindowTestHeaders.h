#pragma once

// The same for test programs with windows.
#include <wx/wx.h>

#include "tests/support/TestHeaders.h"
