#include "schedule/ScheduleFile.h"

#include "platform/Text.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace larkspool {

std::string ScheduleText(std::span<const ScheduleRow> rows) {
    std::string text = Str(rows.size()) + "\n";
    for (const ScheduleRow& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            text += (column > 0 ? ";" : "") + OnOneLine(row[column]);
        }
        text += "\n";
    }
    return text;
}

std::vector<ScheduleRow> ReadSchedule(TextInputStream& file) {
    std::vector<ScheduleRow> rows;
    const auto promised = WholePart<std::int64_t>(Val(file.ReadLine()));
    for (std::int64_t line = 0; line < promised && !file.EndOfFile(); ++line) {
        const std::string text = file.ReadLine();
        const auto cells = SplitB(text, ";");
        if (cells.size() == SavedColumns) {
            ScheduleRow row;
            std::copy(cells.begin(), cells.end(), row.begin());
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

} // namespace larkspool
