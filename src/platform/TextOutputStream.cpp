#include "platform/TextOutputStream.h"

#include <cstdio>
#include <utility>

namespace larkspool {

TextOutputStream::TextOutputStream(FileHandle opened) : file(std::move(opened)) {}

std::optional<TextOutputStream> TextOutputStream::Create(const FolderItem& item) {
    FileHandle opened = OpenFile(item, FileAccess::Replace);
    if (!opened) {
        return std::nullopt;
    }
    return TextOutputStream(std::move(opened));
}

bool TextOutputStream::Write(std::string_view text) {
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) {
        failed = true;
    }
    return !failed;
}

bool TextOutputStream::WriteLine(std::string_view text) { return Write(text) && Write("\n"); }

bool TextOutputStream::Close() {
    if (file && std::fclose(file.release()) != 0) {
        failed = true;
    }
    return !failed;
}

} // namespace larkspool
