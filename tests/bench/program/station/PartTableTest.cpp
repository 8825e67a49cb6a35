#include <gtest/gtest.h>

#include "bench/program/station/PartTable.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "text/Paths.h"

namespace kxbench {
namespace {

TEST(PartTable, NamesTheExpectationInTheProjectsFolder) {
  const TemporaryFolder folder;
  folder.Write("line.ini", "[Scanner]\nRelais1=A\n[Parts]\n4711=adapter.dat\nP-2=sub/two.dat\nempty=\n");
  const Project project{shorttest::Utf8FromPath(folder.Path() / ""), "line"};
  const PartTable parts(project);
  EXPECT_EQ(parts.ExpectationOf("4711"), shorttest::Utf8FromPath(folder.Path() / "adapter.dat"));
  EXPECT_EQ(parts.ExpectationOf("p-2"), shorttest::Utf8FromPath(folder.Path() / "sub/two.dat"));
  for (const char* none : {"Relais1", "4712", "empty", ""}) EXPECT_FALSE(parts.ExpectationOf(none)) << none;
}

TEST(PartTable, WithoutAFileHasNoParts) {
  EXPECT_FALSE(PartTable(Project{"/none/", "x"}).ExpectationOf("a"));
}

}  // namespace
}  // namespace kxbench
