#include "qt/OnScreen.h"

#include <gtest/gtest.h>

namespace {

larkspool::QtDesktop* desktop = nullptr;

} // namespace

larkspool::QtDesktop& larkspool::TheDesktop() { return *desktop; }

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    larkspool::QtDesktop made(count, arguments, "larkspool");
    desktop = &made;
    return RUN_ALL_TESTS();
}
