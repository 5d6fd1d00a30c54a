#pragma once

#include "directory/ReceiverList.h"
#include "platform/Desktop.h"

#include <functional>
#include <memory>
#include <string>

namespace larkspool {

// The receiver directory of the whole program, index i of which is row i of the console's popup.
// Fetches the public list; a page or an error arrives on the event loop. Owned by App, which
// creates a new one for each fetch and so ends the previous fetch.
class KiwiListClass : public ReceiverList {
  public:
    explicit KiwiListClass(Desktop& theDesktop);

    // Asks the host for its list. Without a host the public list is empty and complete at once.
    void Init(const std::string& directoryHost);

    std::function<void()> received; // the fetch has ended, with or without a list

  private:
    void Event_PageReceived(const std::string& content);
    void Event_Error(int code);

    Desktop& desktop;
    std::unique_ptr<HTTPSocket> socket;
};

} // namespace larkspool
