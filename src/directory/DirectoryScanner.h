#pragma once

#include "directory/ReceiverList.h"

#include <string>
#include <string_view>

namespace larkspool {

// Reads receivers from the public directory's page, where the line with a receiver's name is
// followed directly by the line with its address. Accepts any page, as bytes; what has
// another form is ignored.
class DirectoryScanner {
  public:
    explicit DirectoryScanner(ReceiverList& found) : list(found) {}

    void ScanPage(std::string_view page);
    void ProcessLine(std::string_view line);

  private:
    void TakeName(std::string_view line);
    void TakeAddress(std::string_view line);

    ReceiverList& list;
    std::string tempName; // of the receiver whose address comes next
    bool nextLineIsURL = false;
};

} // namespace larkspool
