#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "simulator/CallTrace.h"

namespace simulator {
namespace {

class TraceFile : public testing::Test {
 protected:
  std::string Text() const {
    std::ifstream file(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  ~TraceFile() override {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }

  std::filesystem::path path_ = std::filesystem::path(testing::TempDir()) / "simulator-call.trace";
};

TEST_F(TraceFile, HoldsOneCallALine) {
  std::optional<CallTrace> trace = CallTrace::Open(path_);
  trace->Call("bus_write", {128, 0, -64}, 0);
  trace->Call("adx_hw_generation", {}, 2);
  trace->Call("bus_delete_error");
  trace->Comment("end");
  EXPECT_EQ(Text(), "bus_write 128 0 -64 -> 0\nadx_hw_generation -> 2\nbus_delete_error\n# end\n");
}

TEST_F(TraceFile, ReadingsReadBackAsTheSameNumber) {
  std::optional<CallTrace> trace = CallTrace::Open(path_);
  trace->Call("adx_read", {10, 1, 2}, 0.42);
  trace->Call("adx_read", {10, 1, 2}, 1e9);
  trace->Call("adx_read", {8, 2, 20}, -1.0 / 3.0);
  EXPECT_EQ(Text(),
            "adx_read 10 1 2 -> 0.42\nadx_read 10 1 2 -> 1e+09\nadx_read 8 2 20 -> -0.3333333333333333\n");
}

TEST_F(TraceFile, TextsStayOnOneLine) {
  std::optional<CallTrace> trace = CallTrace::Open(path_);
  trace->Call("bus_get_error_msg", "a \"b\" \\ c\r\n\td, Überlast");
  EXPECT_EQ(Text(), "bus_get_error_msg -> \"a \\\"b\\\" \\\\ c\\r\\n\\td, Überlast\"\n");
}

TEST_F(TraceFile, StartsAnew) {
  CallTrace::Open(path_)->Comment("old");
  CallTrace::Open(path_)->Comment("new");
  EXPECT_EQ(Text(), "# new\n");
}

TEST_F(TraceFile, IsAppendedToWhenAsked) {
  CallTrace::Open(path_)->Comment("before");
  CallTrace::Open(path_, CallTrace::Start::Appended)->Comment("after");
  EXPECT_EQ(Text(), "# before\n# after\n");
}

TEST_F(TraceFile, CannotBeAFolder) {
  EXPECT_FALSE(CallTrace::Open(std::filesystem::path(testing::TempDir())));
}

}  // namespace
}  // namespace simulator
