#pragma once

#include "directory/ReceiverList.h"

#include <string>
#include <string_view>

namespace larkspool {

// Reads receivers out of the public directory's page, where the line with a receiver's name is
// followed directly by the line with its address. Works on bytes and takes any page; what isn't
// told in just this way is left out.
class DirectoryScanner {
  public:
    explicit DirectoryScanner(ReceiverList& found) : list(found) {}

    void ScanPage(std::string_view page);
    void ProcessLine(std::string_view line);

  private:
    void TakeName(std::string_view line);
    void TakeAddress(std::string_view line);

    ReceiverList& list;
    std::string tempName; // waits for its address
    bool nextLineIsURL = false;
};

} // namespace larkspool
