#include "qt/ScriptedNames.h"

#include <dlfcn.h>
#include <netdb.h>

namespace larkspool {

std::map<std::string, std::vector<std::string>>& ScriptedNames() {
    static std::map<std::string, std::vector<std::string>> names;
    return names;
}

} // namespace larkspool

// Takes the place of the C library's for the whole process. Qt calls it on a thread of its own.
extern "C" [[gnu::visibility("default")]] int
getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result) {
    using Real = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto real = reinterpret_cast<Real>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (name == nullptr || !std::string(name).ends_with(".test")) {
        return real(name, service, hints, result);
    }
    addrinfo literal = *hints;
    literal.ai_flags = AI_NUMERICHOST;
    addrinfo** end = result;
    *end = nullptr;
    for (const std::string& address : larkspool::ScriptedNames()[name]) {
        if (const int failed = real(address.c_str(), service, &literal, end); failed != 0) {
            return failed;
        }
        while (*end != nullptr) {
            end = &(*end)->ai_next;
        }
    }
    return *result == nullptr ? EAI_NONAME : 0;
}
