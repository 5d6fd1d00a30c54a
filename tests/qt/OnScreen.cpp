#include "qt/OnScreen.h"

#include <gtest/gtest.h>

#include <memory>

namespace larkspool {

namespace {

std::unique_ptr<QtDesktop>& Slot() {
    static std::unique_ptr<QtDesktop> desktop;
    return desktop;
}

class DesktopEnvironment : public testing::Environment {
  public:
    void SetUp() override { Slot() = std::make_unique<QtDesktop>(count, arguments, "larkspool"); }
    void TearDown() override { Slot().reset(); }

  private:
    char name[10] = "larkspool";
    char* arguments[2] = {name, nullptr};
    int count = 1;
};

[[maybe_unused]] testing::Environment* const environment =
    testing::AddGlobalTestEnvironment(std::make_unique<DesktopEnvironment>().release());

} // namespace

QtDesktop& TheDesktop() { return *Slot(); }

} // namespace larkspool
