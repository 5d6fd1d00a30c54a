#pragma once

namespace larkspool {

// While this object exists, the computer does not go to sleep by itself. Its display may go dark.
class StayAwake {
  public:
    virtual ~StayAwake() = default;
};

} // namespace larkspool
