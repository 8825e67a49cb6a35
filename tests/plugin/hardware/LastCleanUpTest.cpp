#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "plugin/hardware/LastCleanUp.h"

namespace shorttest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LastCleanUps : public testing::Test {
 protected:
  std::function<void()> Opens(const std::string& what) {
    return [this, what] { opened.push_back(what); };
  }

  std::vector<std::string> opened;
};

TEST_F(LastCleanUps, InnermostRunsFirst) {
  const LastCleanUp outer(Opens("outer"));
  const LastCleanUp inner(Opens("inner"));
  RunLastCleanUps();
  EXPECT_THAT(opened, ElementsAre("inner", "outer"));
}

TEST_F(LastCleanUps, RunOnce) {
  const LastCleanUp procedure(Opens("procedure"));
  RunLastCleanUps();
  RunLastCleanUps();
  EXPECT_THAT(opened, ElementsAre("procedure"));
}

TEST_F(LastCleanUps, AreOverWithTheirProcedure) {
  const LastCleanUp outer(Opens("outer"));
  { const LastCleanUp inner(Opens("inner")); }
  RunLastCleanUps();
  EXPECT_THAT(opened, ElementsAre("outer"));
}

TEST_F(LastCleanUps, NoneRunsWithoutAProcedure) {
  { const LastCleanUp procedure(Opens("procedure")); }
  RunLastCleanUps();
  EXPECT_THAT(opened, IsEmpty());
}

TEST_F(LastCleanUps, FailureOfOneKeepsNoOtherFromRunning) {
  const LastCleanUp outer(Opens("outer"));
  const LastCleanUp failing([] { throw std::runtime_error("driver gone"); });
  RunLastCleanUps();
  EXPECT_THAT(opened, ElementsAre("outer"));
}

TEST_F(LastCleanUps, ProcedureAfterThemHasItsOwn) {
  {
    const LastCleanUp procedure(Opens("first"));
    RunLastCleanUps();
  }
  const LastCleanUp procedure(Opens("second"));
  RunLastCleanUps();
  EXPECT_THAT(opened, ElementsAre("first", "second"));
}

}  // namespace
}  // namespace shorttest
