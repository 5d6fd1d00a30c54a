#include "platform/ReplaceFile.h"

#include "platform/BinaryStream.h"
#include "platform/Desktop.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace larkspool {

namespace {

// Two programs that save at the same time must not write to one file.
std::string NameOfOurOwn(Desktop& desktop, const std::string& name) {
    static constexpr std::string_view Digits = "0123456789abcdef";
    std::string own = name + ".";
    for (const char random : desktop.RandomBytes(4)) {
        const auto byte = static_cast<unsigned char>(random);
        own += Digits[byte >> 4U];
        own += Digits[byte & 0xFU];
    }
    return own + ".new";
}

} // namespace

bool ReplaceFile(Desktop& desktop, const FolderItem& file, std::string_view bytes) {
    // If the name is a link, its target is replaced, not the link.
    std::error_code failure;
    const auto real = std::filesystem::weakly_canonical(file.Path(), failure);
    const FolderItem target = failure ? file : FolderItem(real);
    auto fresh = target.Parent().Child(NameOfOurOwn(desktop, target.Name()));
    auto stream = fresh ? BinaryStream::Create(*fresh) : std::nullopt;
    if (!stream) {
        return false;
    }
    if (const auto old = std::filesystem::status(target.Path(), failure); !failure) {
        // A file that others may not read stays private.
        std::filesystem::permissions(fresh->Path(), old.permissions(), failure);
    }
    stream->WriteString(bytes);
    if (stream->Close() && desktop.Settle(*fresh) && fresh->MoveTo(target)) {
        desktop.Settle(
            target.Parent()); // the new name; without it the old file would still be whole
        return true;
    }
    fresh->Delete();
    return false;
}

} // namespace larkspool
