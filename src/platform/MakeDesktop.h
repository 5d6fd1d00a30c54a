#pragma once

#include "platform/Desktop.h"

#include <functional>
#include <memory>
#include <string>

namespace larkspool {

// A desktop together with its event loop. Made once, in main.
class RunningDesktop : public Desktop {
  public:
    // Calls opened as the loop's first event and returns the process's exit code after its end.
    virtual int Run(const std::function<void()>& opened) = 0;
};

// The application's name is the name of its folders among the user's settings and data. Both
// arguments of main must outlive the desktop.
std::unique_ptr<RunningDesktop> MakeDesktop(int& argc, char** argv,
                                            const std::string& applicationName);

} // namespace larkspool
