#pragma once

namespace larkspool::version {

inline constexpr int Major = 1;
inline constexpr int Minor = 3;
inline constexpr int Bug = 0;
inline constexpr int NonRelease = 4;
inline constexpr int Stage = 2; // a beta
inline constexpr char Short[] = "1.3.0b4";
inline constexpr char Long[] = "Larkspool 1.3.0b4";

} // namespace larkspool::version
