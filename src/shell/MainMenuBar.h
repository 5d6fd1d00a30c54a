#pragma once

#include "platform/Menu.h"

namespace larkspool {

// The menu bar of all windows: the File menu and the Edit menu.
MenuBar MakeMainMenuBar();

} // namespace larkspool
