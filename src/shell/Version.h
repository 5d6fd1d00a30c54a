#pragma once

namespace larkspool::version {

inline constexpr int Major = 1;
inline constexpr int Minor = 3;
inline constexpr int Bug = 0;
inline constexpr char Short[] = "1.3.0b4";

} // namespace larkspool::version
