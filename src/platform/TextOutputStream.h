#pragma once

#include "platform/FileHandle.h"
#include "platform/FolderItem.h"

#include <optional>
#include <string_view>

namespace larkspool {

// Writes a text file; lines end with LF. Buffered, so that only Close can say
// whether all of it has reached the file.
class TextOutputStream {
  public:
    // Replaces what is there.
    static std::optional<TextOutputStream> Create(const FolderItem& item);

    bool Write(std::string_view text);
    bool WriteLine(std::string_view text);
    // True if this and every write before it succeeded.
    bool Close();
    bool Failed() const { return failed; }

  private:
    explicit TextOutputStream(FileHandle opened);

    FileHandle file;
    bool failed = false;
};

} // namespace larkspool
