#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "tests/support/Browser.h"

namespace shorttest::testkit {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

/// Pages in a folder whose name needs care in an address and in a shell.
class Pages : public ::testing::Test {
 protected:
  Pages() {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
  }
  ~Pages() override { std::filesystem::remove_all(folder); }

  std::filesystem::path Page(const std::string& name, const std::string& text) {
    std::ofstream(folder / name, std::ios::binary) << text;
    return folder / name;
  }

  static std::string FailureOf(const std::filesystem::path& page, const std::string& script) {
    try {
      return "answer " + AskPage(page, script);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  }

  std::filesystem::path folder =
      std::filesystem::path(::testing::TempDir()) /
      (std::string("Kabel's Bäume 100%# ") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(Pages, AnswerAboutTheirGeometry) {
  const auto page =
      Page("one.html", "<!doctype html><body style='margin:0'><p id=a style='width:50%;height:20px'>");

  EXPECT_EQ(AskPage(page,
                    "const box = document.getElementById('a').getBoundingClientRect();"
                    "return [box.width, box.height, window.innerHeight];",
                    {600, 400}),
            "[300,20,400]");
}

TEST_F(Pages, ThatAreDrawingsAnswerToo) {
  const auto page =
      Page("one.svg", "<svg xmlns='http://www.w3.org/2000/svg'><text>Äpfel &lt;&amp;</text></svg>");

  EXPECT_EQ(AskPage(page, "return document.querySelector('text').textContent;"), "Äpfel <&");
}

TEST_F(Pages, AreClickedAndWaitedFor) {
  const auto page = Page(
      "one.html", "<!doctype html><button onclick=\"setTimeout(() => this.textContent = 'done', 5000)\">");

  EXPECT_EQ(AskPage(page,
                    "document.querySelector('button').click();"
                    "await new Promise(resolve => setTimeout(resolve, 6000));"
                    "return document.querySelector('button').textContent;"),
            "done");
}

TEST_F(Pages, WithFailingScriptsFail) {
  const auto page = Page("one.html", "<!doctype html><script>missing()</script>");

  EXPECT_THAT(FailureOf(page, "return 1;"),
              AllOf(HasSubstr("one.html"), HasSubstr("missing is not defined")));
}

TEST_F(Pages, ThatAskForOtherFilesFail) {
  const auto page = Page("one.html", "<!doctype html><img src='other.png'>");

  EXPECT_THAT(FailureOf(page, "return 1;"), HasSubstr("other.png"));
}

TEST_F(Pages, ThatAreMissingFail) {
  EXPECT_THAT(FailureOf(folder / "no.html", "return 1;"), HasSubstr("no.html"));
}

struct Script {
  const char* name;
  const char* text;
  const char* failure;
};

class FailingScripts : public Pages, public ::testing::WithParamInterface<Script> {};

TEST_P(FailingScripts, SayWhatIsWrong) {
  EXPECT_THAT(FailureOf(Page("one.html", "<!doctype html>"), GetParam().text), HasSubstr(GetParam().failure));
}

INSTANTIATE_TEST_SUITE_P(Browser, FailingScripts,
                         ::testing::Values(Script{"Throws", "throw Error('no such wire');", "no such wire"},
                                           Script{"IsNoScript", "return 1 +;", "Unexpected token"},
                                           Script{"NeverAnswers", "await new Promise(() => {});",
                                                  "no answer"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Pages, ArePhotographed) {
  const auto page = Page("one.html", "<!doctype html>A page");

  Screenshot(page, folder / "one.png", {320, 200});

  std::ifstream picture(folder / "one.png", std::ios::binary);
  std::string start(24, '\0');
  picture.read(start.data(), 24);
  EXPECT_EQ(start.substr(16), std::string("\0\0\x01\x40\0\0\0\xc8", 8)) << "width and height";
}

}  // namespace
}  // namespace shorttest::testkit
