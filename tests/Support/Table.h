#pragma once

#include <gtest/gtest.h>

#include <vector>

namespace vantix {

/// Checks each row of a table; what fails says in which row, counted from 1.
template <typename Row, typename Check>
void checkRows(const std::vector<Row>& rows, Check check) {
    int number = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE("in row " + std::to_string(++number));
        check(row);
    }
}

}  // namespace vantix
