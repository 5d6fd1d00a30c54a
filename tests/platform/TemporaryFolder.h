#pragma once

#include "support/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace larkspool {

// An empty folder for one test, removed with all that is in it.
class TemporaryFolder : public testing::Test {
  public:
    ~TemporaryFolder() override {
        std::error_code error;
        std::filesystem::remove_all(folder.Path(), error);
    }

  protected:
    TemporaryFolder()
        : folder(std::filesystem::temp_directory_path() /
                 ("larkspool-test-" + std::to_string(std::random_device{}()))) {
        EXPECT_TRUE(folder.CreateFolder());
    }

    FolderItem Item(const std::string& name) const { return FolderItem(folder.Path() / name); }
    FolderItem FileWith(const std::string& name, const std::string& bytes) const {
        Put(Item(name), bytes);
        return Item(name);
    }

    FolderItem folder;
};

} // namespace larkspool
