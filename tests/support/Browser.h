#pragma once

#include <filesystem>
#include <string>

namespace shorttest::testkit {

/// A page, HTML or SVG, in a real browser: headless Chromium, on Linux alone. Opening one takes about a
/// second.

/// The room that a page has, in CSS pixels.
struct PageSize {
  int width = 1280;
  int height = 800;
};

/// Opens `file` and returns what `script` answers about it. The page is shown unchanged, in a frame of its
/// own.
///
/// `script` is the body of an asynchronous JavaScript function with the parameters `window` and `document`,
/// those of the page, and runs when the page has been loaded: `return
/// document.querySelectorAll('circle').length;`. A string is returned as it is, anything else as JSON. It may
/// click, and await: timers run at once, ten seconds' worth at most.
///
/// Throws std::runtime_error, with what the browser said, when there is no browser or no page, when the
/// script fails or does not answer, when the page writes to the console, as it does when a script of its own
/// fails, and when it asks for another file or the network: a page of ours is one file. After a minute the
/// browser is ended.
std::string AskPage(const std::filesystem::path& file, const std::string& script, PageSize size = {});

/// A picture (PNG) of the upper left part of the page, for people. Throws as AskPage, when there is no
/// picture.
void Screenshot(const std::filesystem::path& file, const std::filesystem::path& picture, PageSize size = {});

}  // namespace shorttest::testkit
