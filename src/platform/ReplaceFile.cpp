#include "platform/ReplaceFile.h"

#include "platform/BinaryStream.h"

#include <filesystem>
#include <system_error>

namespace larkspool {

bool ReplaceFile(const FolderItem& file, std::string_view bytes) {
    // Where the name is a link, the file that it leads to is replaced, not the link.
    std::error_code failure;
    const auto real = std::filesystem::weakly_canonical(file.Path(), failure);
    const FolderItem target = failure ? file : FolderItem(real);
    auto fresh = target.Parent().Child(target.Name() + ".new");
    auto stream = fresh ? BinaryStream::Create(*fresh) : std::nullopt;
    if (!stream) {
        return false;
    }
    stream->WriteString(bytes);
    if (stream->Close() && fresh->MoveTo(target)) {
        return true;
    }
    fresh->Delete();
    return false;
}

} // namespace larkspool
