#pragma once
// Table-driven tests: each row has a `name` field that names the generated test and is what
// gtest prints for the row instead of its bytes.

#include <concepts>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace quillon::testing {

struct RowName {
  template <class Row>
  std::string operator()(const ::testing::TestParamInfo<Row>& row) const {
    return row.param.name;
  }
};

}  // namespace quillon::testing

namespace quillon {
namespace {  // the rows live in each test's unnamed namespace, where gtest looks for PrintTo

// This clang-format release mangles requires-clauses.
// clang-format off
template <class Row>
  requires requires(const Row& row) {
    { row.name } -> std::convertible_to<const char*>;
  }
void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}
// clang-format on

}  // namespace
}  // namespace quillon
