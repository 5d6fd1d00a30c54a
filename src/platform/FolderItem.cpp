#include "platform/FolderItem.h"

#include <system_error>
#include <utility>

namespace larkspool {

namespace fs = std::filesystem;

FolderItem::FolderItem(fs::path location) : path(std::move(location)) {
    if (!path.has_filename() && path.has_relative_path()) {
        path = path.parent_path();
    }
}

std::string FolderItem::Name() const { return path.filename().string(); }

bool FolderItem::Exists() const {
    std::error_code error;
    return fs::exists(path, error);
}

bool FolderItem::IsFolder() const {
    std::error_code error;
    return fs::is_directory(path, error);
}

std::uint64_t FolderItem::Length() const {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    return error ? 0 : size;
}

bool FolderItem::Delete() {
    std::error_code error;
    return fs::remove(path, error) && !error;
}

FolderItem FolderItem::Parent() const {
    const fs::path parent = path.parent_path();
    return FolderItem(parent.empty() ? fs::path(".") : parent);
}

std::optional<FolderItem> FolderItem::Child(std::string_view name) const {
    using namespace std::string_view_literals;
    if (name.empty() || name == "." || name == ".." ||
        name.find_first_of("/\0"sv) != std::string_view::npos) {
        return std::nullopt;
    }
    return FolderItem(path / fs::path(name));
}

bool FolderItem::CreateFolder() {
    std::error_code error;
    fs::create_directories(path, error);
    return IsFolder();
}

bool FolderItem::MoveTo(const FolderItem& destination) {
    std::error_code error;
    fs::rename(path, destination.path, error);
    return !error;
}

} // namespace larkspool
