#include "platform/OnOneLine.h"

#include <algorithm>

namespace larkspool {

std::string OnOneLine(std::string cell) {
    std::replace_if(
        cell.begin(), cell.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return cell;
}

} // namespace larkspool
