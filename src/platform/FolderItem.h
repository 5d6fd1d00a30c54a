#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// A path in the file system, which may exist or not. Failures are return values; nothing here
// throws.
class FolderItem {
  public:
    explicit FolderItem(std::filesystem::path location);

    std::string Name() const;
    const std::filesystem::path& Path() const { return path; }
    bool Exists() const;
    bool IsFolder() const;
    // Bytes in the file; 0 for folders and for what can't be read.
    std::uint64_t Length() const;

    // True if the item existed and is deleted. A folder must be empty.
    bool Delete();
    FolderItem Parent() const;
    // Empty unless the name is one plain name, not empty, ".", "..", or one
    // with a path separator or NUL.
    std::optional<FolderItem> Child(std::string_view name) const;
    // Makes missing parents too. True if the folder is there afterwards.
    bool CreateFolder();
    // Replaces the destination in one atomic step; both must lie in one file system.
    bool MoveTo(const FolderItem& destination);

  private:
    std::filesystem::path path;
};

} // namespace larkspool
