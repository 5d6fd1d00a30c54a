#pragma once

#include <cstdint>
#include <string_view>

namespace larkspool {

constexpr double SecondsFrom1904To1970 = 2082844800;

// A moment in UTC with the fields of the Gregorian calendar, years 1 to 9999.
// A field set beyond its range rolls over into the others; a result outside the
// years 1 to 9999 becomes the nearest end.
class Date {
  public:
    // 1970-01-01 00:00:00.
    Date() = default;
    static Date FromTotalSeconds(double secondsSince1904);
    static Date FromUnixSeconds(double secondsSince1970);

    // Seconds since 1904-01-01 00:00:00, with the fraction that was set.
    double TotalSeconds() const;
    // The same moment in seconds since 1970-01-01 00:00:00.
    double UnixSeconds() const;

    int Year() const;
    int Month() const;
    int Day() const;
    int Hour() const;
    int Minute() const;
    int Second() const;
    // 1 Sunday to 7 Saturday.
    int DayOfWeek() const;

    // Each keeps the other fields.
    void SetHour(int hour);
    void SetMinute(int minute);
    void SetSecond(int second);
    // Keeps the time of day.
    void SetCalendarDay(int year, int month, int day);
    // Keeps the day if the values are in range; clears the fraction of a second.
    void SetTimeOfDay(int hour, int minute, int second);

    // For months 1 to 12.
    static int DaysInMonth(int year, int month);

  private:
    void Assign(double value, std::int64_t secondsFrom1970ToZero);
    void AddSeconds(std::int64_t delta);
    std::int64_t DayNumber() const;
    std::int64_t SecondOfDay() const;

    std::int64_t seconds = 0; // whole, since 1970
    double fraction = 0;      // 0 to below 1
};

// Reads text by a pattern of %Y, %m, %d, %H, %M, %S and plain characters. The whole text must match
// and be a real date and time; otherwise result does not change. Leading zeros may be missing, and
// blanks around the text are allowed. A field that the pattern leaves out is that of 1970-01-01
// 00:00:00.
bool ParseDateMBS(std::string_view format, std::string_view text, Date& result);

} // namespace larkspool
