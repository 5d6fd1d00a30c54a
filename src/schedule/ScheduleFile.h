#pragma once

#include "platform/TextInputStream.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace larkspool {

// The columns of a schedule. The last one holds what the comparison with the clock gave; it is
// neither shown nor saved.
enum ScheduleColumn {
    UrlColumn,
    DateColumn,
    TimeColumn,
    FreqColumn,
    ModeColumn,
    FilterColumn,
    TestColumn
};
constexpr std::size_t SavedColumns = TestColumn;

// The cells of a row that are shown and saved.
using ScheduleRow = std::array<std::string, SavedColumns>;

// The text of a schedule file: the number of rows, then a line a row with ";" between the cells.
// Nothing quotes a ";" in a cell: such a row is written as it stands and dropped on reading.
std::string ScheduleText(std::span<const ScheduleRow> rows);

// Takes the rows that the first line promises, as far as there are lines. A line that has not six
// cells counts as one of them and is dropped.
std::vector<ScheduleRow> ReadSchedule(TextInputStream& file);

} // namespace larkspool
