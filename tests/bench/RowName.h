#pragma once

#include <gtest/gtest.h>

#include <string>

/// Name of a table test's row, for INSTANTIATE_TEST_SUITE_P: the row's own.
template <typename Row>
std::string RowName(const testing::TestParamInfo<Row>& row) {
  return row.param.name;
}
