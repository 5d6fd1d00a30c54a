#pragma once

#include "platform/FolderItem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
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
        std::ofstream(folder.Path() / name, std::ios::binary) << bytes;
        return Item(name);
    }
    static std::string Content(const FolderItem& item) {
        std::ifstream file(item.Path(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    FolderItem folder;
};

} // namespace larkspool
