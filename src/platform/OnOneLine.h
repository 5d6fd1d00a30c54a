#pragma once

#include <string>

namespace larkspool {

// A cell as it can stand in a line of a text file: a line end in it, pasted there, would make two
// lines of one.
std::string OnOneLine(std::string cell);

} // namespace larkspool
