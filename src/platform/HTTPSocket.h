#pragma once

#include <functional>
#include <string>

namespace larkspool {

// Fetches a page. A body over 8 MiB or an answer slower than 30 s is an error.
class HTTPSocket {
  public:
    virtual ~HTTPSocket() = default;

    virtual void Get(const std::string& url) = 0; // cancels the previous one; always reports later

    // The whole body, for any status: a 404 page is a page.
    std::function<void(const std::string& url, int httpStatus, const std::string& content)>
        pageReceived;
    std::function<void(int code)> error; // there was no answer
};

} // namespace larkspool
