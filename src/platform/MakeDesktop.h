#pragma once

#include "platform/Desktop.h"

#include <functional>
#include <memory>

namespace larkspool {

// A desktop together with its event loop. Made once, in main.
class RunningDesktop : public Desktop {
  public:
    // Calls opened as the loop's first event and returns the process's exit code when it has ended.
    virtual int Run(const std::function<void()>& opened) = 0;
};

std::unique_ptr<RunningDesktop> MakeDesktop(int& argc, char** argv);

} // namespace larkspool
