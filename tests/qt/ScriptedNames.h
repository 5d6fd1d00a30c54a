#pragma once

#include <map>
#include <string>
#include <vector>

namespace larkspool {

// What the resolver of this process says of names that end in ".test": their addresses, in that
// order; without any there is no such name. Other names are looked up as ever.
std::map<std::string, std::vector<std::string>>& ScriptedNames();

} // namespace larkspool
