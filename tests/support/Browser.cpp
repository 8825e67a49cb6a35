#include "tests/support/Browser.h"

#include <sys/wait.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace shorttest::testkit {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view AnswerStart = "<pre id=\"answer\">";
constexpr std::string_view FramePage = "frame.html";

// The page in a frame: it stays as it is, and an SVG is asked like an HTML page.
constexpr std::string_view FrameScript = R"(
const page = document.getElementById('page');
const tell = (kind, text) => { document.getElementById('answer').textContent = kind + encodeURIComponent(text); };
// What the network was asked for, and what elements name: asking for files leaves no other trace.
function othersOf(window, document) {
  const named = [...document.querySelectorAll('[src], link[href], image, use, object[data]')].map(
      element => element.getAttribute('src') ?? element.getAttribute('href') ?? element.getAttribute('xlink:href') ??
          element.getAttribute('data') ?? '');
  const asked = window.performance.getEntriesByType('resource').map(entry => entry.name);
  return [...named, ...asked].filter(name => !/^(#|data:|blob:|about:|$)/.test(name));
}
page.addEventListener('load', async () => {
  try {
    const question = Object.getPrototypeOf(async () => {}).constructor('window', 'document', script);
    const answer = await question(page.contentWindow, page.contentDocument);
    const others = othersOf(page.contentWindow, page.contentDocument);
    if (others.length > 0) throw Error('the page asks for ' + others.join(', '));
    tell('+', typeof answer === 'string' ? answer : JSON.stringify(answer ?? null));
  } catch (error) { tell('-', error.stack ?? String(error)); }
});
page.src = url;
)";

/// A folder for one browser: its settings, and what it is to open.
class BrowserFolder {
 public:
  BrowserFolder() {
    std::string name = (fs::temp_directory_path() / "browser.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
    path = name;
  }
  ~BrowserFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  BrowserFolder(const BrowserFolder&) = delete;
  BrowserFolder& operator=(const BrowserFolder&) = delete;

  fs::path path;
};

std::string WholeText(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteText(const fs::path& file, const std::string& text) {
  if (!(std::ofstream(file, std::ios::binary) << text << std::flush)) {
    throw std::runtime_error("cannot write " + file.string());
  }
}

std::string WithPercents(const std::string& bytes) {
  std::ostringstream text;
  text << std::hex << std::uppercase << std::setfill('0');
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x80U && std::isalnum(byte) != 0) || c == '/' || c == '.' || c == '-' || c == '_') {
      text << c;
    } else {
      text << '%' << std::setw(2) << static_cast<unsigned>(byte);
    }
  }
  return text.str();
}

std::string FileUrl(const fs::path& file) { return "file://" + WithPercents(fs::absolute(file).string()); }

std::string FromPercents(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      bytes += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else {
      bytes += text[i];
    }
  }
  return bytes;
}

std::string Quoted(const std::string& word) {
  std::string text = "'";
  for (const char c : word) text += c == '\'' ? "'\\''" : std::string(1, c);
  return text + "'";
}

/// What the page wrote to the console, without the script that asks it: the browser's log holds much more.
std::string ConsoleLines(const std::string& log) {
  std::istringstream lines(log);
  std::string text;
  for (std::string line; std::getline(lines, line);) {
    const auto start = line.find("CONSOLE");
    if (start != std::string::npos && line.find(FramePage) == std::string::npos)
      text += line.substr(start) + "\n";
  }
  return text;
}

struct BrowserRun {
  std::string output;
  std::string log;
};

/// Runs the browser with its settings in `folder`, and ends it and its processes after a minute.
BrowserRun RunBrowser(const fs::path& folder, const std::string& options, const std::string& url) {
  // As root it does not start with a sandbox. It looks for nothing outside the page and the folder.
  const std::string command =
      "HOME=" + Quoted(folder.string()) + " timeout --kill-after=5 60 chromium --headless --no-sandbox" +
      " --disable-gpu --disable-dev-shm-usage --no-first-run --disable-extensions --disable-sync" +
      " --disable-background-networking --disable-component-update --no-proxy-server" +
      " --host-resolver-rules='MAP * ~NOTFOUND' --allow-file-access-from-files --hide-scrollbars" +
      " --enable-logging=stderr --user-data-dir=" + Quoted((folder / "profile").string()) + " " + options +
      " " + Quoted(url) + " 2>" + Quoted((folder / "log").string());
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::system_error(errno, std::generic_category(), "popen");
  BrowserRun run;
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) run.output += static_cast<char>(c);
  const int status = pclose(pipe);
  run.log = WholeText(folder / "log");
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return run;
  const int exit = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  if (exit == 127) throw std::runtime_error("no browser: the command chromium is missing");
  if (exit == 124 || exit == 137)
    throw std::runtime_error("the browser took longer than a minute\n" + run.log);
  throw std::runtime_error("the browser failed\n" + run.log);
}

void RequirePage(const fs::path& file) {
  if (!fs::is_regular_file(file)) throw std::runtime_error("no page " + file.string());
}

std::string SizeText(PageSize size, const char* between) {
  return std::to_string(size.width) + between + std::to_string(size.height);
}

}  // namespace

std::string AskPage(const fs::path& file, const std::string& script, PageSize size) {
  RequirePage(file);
  const BrowserFolder folder;
  WriteText(folder.path / FramePage,
            "<!doctype html><meta charset=utf-8><iframe id=page style='border:0;width:" +
                SizeText(size, "px;height:") + "px'></iframe><pre id=answer></pre><script>const url = '" +
                FileUrl(file) + "', script = decodeURIComponent('" + WithPercents(script) + "');" +
                std::string(FrameScript) + "</script>");
  const BrowserRun run =
      RunBrowser(folder.path, "--dump-dom --virtual-time-budget=10000", FileUrl(folder.path / FramePage));

  const auto start = run.output.find(AnswerStart);
  std::string answer;
  if (start != std::string::npos) {
    const auto text = start + AnswerStart.size();
    answer = run.output.substr(text, run.output.find('<', text) - text);
  }
  if (answer.empty()) throw std::runtime_error("no answer from the script in ten seconds");
  const std::string text = FromPercents(std::string_view(answer).substr(1));
  if (answer[0] == '-') throw std::runtime_error(text);
  const std::string complaints = ConsoleLines(run.log);
  if (!complaints.empty()) throw std::runtime_error(file.string() + " writes to the console:\n" + complaints);
  return text;
}

void Screenshot(const fs::path& file, const fs::path& picture, PageSize size) {
  RequirePage(file);
  const BrowserFolder folder;
  const BrowserRun run = RunBrowser(
      folder.path,
      "--window-size=" + SizeText(size, ",") + " --screenshot=" + Quoted(fs::absolute(picture).string()),
      FileUrl(file));
  if (!fs::is_regular_file(picture)) throw std::runtime_error("no picture\n" + run.log);
}

}  // namespace shorttest::testkit
