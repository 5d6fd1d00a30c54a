#pragma once

#include "platform/Date.h"

#include <string_view>

namespace larkspool {

// Reads text by a pattern of %Y, %m, %d, %H, %M, %S and plain characters. The
// whole text must match and be a real date and time, else result stays as it is.
// Fields may be short of leading zeros, and blanks may stand around it all. What the pattern leaves
// out is that of 1970-01-01 00:00:00.
bool ParseDateMBS(std::string_view format, std::string_view text, Date& result);

} // namespace larkspool
