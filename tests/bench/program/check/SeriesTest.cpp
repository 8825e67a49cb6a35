#include <gmock/gmock.h>

#include "bench/program/check/Series.h"

namespace kxbench {
namespace {

using results::Verdict;
using testing::HasSubstr;

class CheckSeries : public testing::Test {
 protected:
  Series Of(std::optional<std::int64_t> repeat, bool untilFault) {
    return Series({repeat, untilFault}, [this] { return seconds_; });
  }

  /// A check that took a second; whether its result is that of the series.
  bool Check(Series& series, const std::vector<std::string>& faults) {
    seconds_ += 1;
    result_.verdict = faults.empty() ? Verdict::Pass : Verdict::Fail;
    const bool settles = series.Settles(result_);
    series.Ended(faults);
    return settles;
  }

  double seconds_ = 100;
  results::Result result_;
};

TEST_F(CheckSeries, WithoutOptionsIsOneCheck) {
  Series one = Of(std::nullopt, false);
  EXPECT_TRUE(one.GoesOn());
  EXPECT_TRUE(Check(one, {}));
  EXPECT_FALSE(one.GoesOn());
}

TEST_F(CheckSeries, EndsAfterItsNumberOfChecks) {
  Series three = Of(3, false);
  EXPECT_FALSE(Check(three, {}));
  EXPECT_FALSE(Check(three, {}));
  EXPECT_TRUE(three.GoesOn());
  EXPECT_TRUE(Check(three, {})) << "without findings the last check is the result";
  EXPECT_FALSE(three.GoesOn());
  EXPECT_EQ(result_.checks, 3);
  EXPECT_EQ(result_.seconds, 3);
  EXPECT_THAT(three.Summary(), HasSubstr("3 checks in 3.00 s, none with findings\n"));
}

TEST_F(CheckSeries, FirstFindingsAreItsResult) {
  Series four = Of(4, false);
  EXPECT_FALSE(Check(four, {}));
  EXPECT_TRUE(Check(four, {"open", "open"}));
  EXPECT_EQ(result_.checks, 2);
  EXPECT_FALSE(Check(four, {"open", "short"}));
  EXPECT_FALSE(Check(four, {}));
  EXPECT_EQ(four.Summary(),
            "4 checks in 4.00 s, 2 with findings; the first: check 2, after 2.00 s\n"
            "  in 2 checks: open\n"
            "  in 1 check: short\n"
            "not seen: what came and went within one check, which took 1.00 s on average\n");
}

TEST_F(CheckSeries, UntilFaultEndsWithTheFirstFindings) {
  Series endless = Of(std::nullopt, true);
  for (int i = 0; i < 1000; ++i) {
    ASSERT_TRUE(endless.GoesOn());
    ASSERT_FALSE(Check(endless, {}));
  }
  EXPECT_TRUE(Check(endless, {"open"}));
  EXPECT_FALSE(endless.GoesOn());
}

TEST_F(CheckSeries, CancelIsTheResultWhereNothingWasFoundBefore) {
  Series endless = Of(std::nullopt, true);
  Check(endless, {});
  result_.verdict = Verdict::Cancelled;
  EXPECT_TRUE(endless.Settles(result_));
  EXPECT_EQ(result_.checks, 2);

  Series found = Of(5, false);
  Check(found, {"open"});
  result_.verdict = Verdict::Cancelled;
  EXPECT_FALSE(found.Settles(result_));
}

}  // namespace
}  // namespace kxbench
