#pragma once

#include "platform/TextInputStream.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace larkspool {

// The columns of a schedule, in the order in which they are shown and saved. TestColumn holds the
// result of the comparison with the clock and is neither shown nor saved: a new column goes in
// front of it.
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
constexpr std::size_t ScheduleColumns = TestColumn + 1;

// The cells of a row that are shown and saved.
using ScheduleRow = std::array<std::string, SavedColumns>;

// The text of a schedule file: the number of rows, then one line per row with ";" between the
// cells. A ";" in a cell is not quoted: ReadSchedule drops such a row.
std::string ScheduleText(std::span<const ScheduleRow> rows);

// Reads as many lines as the first line says, or fewer if the file ends before. A line without
// exactly SavedColumns cells counts as one of them and is dropped.
std::vector<ScheduleRow> ReadSchedule(TextInputStream& file);

} // namespace larkspool
