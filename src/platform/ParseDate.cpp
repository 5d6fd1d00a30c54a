#include "platform/ParseDate.h"

#include "platform/Text.h"

#include <algorithm>
#include <cstddef>

namespace larkspool {

namespace {

struct Fields {
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

bool TakeNumber(std::string_view& text, std::size_t mostDigits, int& number) {
    std::size_t count = 0;
    int value = 0;
    while (count < mostDigits && count < text.size() && text[count] >= '0' && text[count] <= '9') {
        value = value * 10 + (text[count++] - '0');
    }
    text.remove_prefix(count);
    number = value;
    return count > 0;
}

bool TakeField(char kind, std::string_view& text, Fields& fields) {
    switch (kind) {
    case 'Y':
        return TakeNumber(text, 4, fields.year);
    case 'm':
        return TakeNumber(text, 2, fields.month);
    case 'd':
        return TakeNumber(text, 2, fields.day);
    case 'H':
        return TakeNumber(text, 2, fields.hour);
    case 'M':
        return TakeNumber(text, 2, fields.minute);
    case 'S':
        return TakeNumber(text, 2, fields.second);
    default:
        return false;
    }
}

bool Exists(const Fields& fields) {
    return fields.year >= 1 && fields.month >= 1 && fields.month <= 12 && fields.day >= 1 &&
           fields.day <= Date::DaysInMonth(fields.year, fields.month) && fields.hour <= 23 &&
           fields.minute <= 59 && fields.second <= 59;
}

} // namespace

bool ParseDateMBS(std::string_view format, std::string_view text, Date& result) {
    Fields fields;
    text = WithoutBlanksAround(text);
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '%') {
            ++i;
            if (i == format.size() || !TakeField(format[i], text, fields)) {
                return false;
            }
        } else {
            if (!text.starts_with(format[i])) {
                return false;
            }
            text.remove_prefix(1);
        }
    }
    if (!text.empty() || !Exists(fields)) {
        return false;
    }
    Date date;
    date.SetCalendarDay(fields.year, fields.month, fields.day);
    date.SetTimeOfDay(fields.hour, fields.minute, fields.second);
    result = date;
    return true;
}

} // namespace larkspool
