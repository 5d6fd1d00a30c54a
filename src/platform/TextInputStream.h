#pragma once

#include "platform/FileHandle.h"
#include "platform/FolderItem.h"

#include <cstddef>
#include <optional>
#include <string>

namespace larkspool {

// Lines of a text file, read on demand. LF, CRLF and CR end a line.
// A UTF-8 byte order mark at the start is skipped.
class TextInputStream {
  public:
    // The rest of a longer line is dropped. In bytes.
    static constexpr std::size_t LongestLine = std::size_t{64} * 1024;

    static std::optional<TextInputStream> Open(const FolderItem& item);
    static TextInputStream FromText(std::string text);

    // Without its line end; "" past the end.
    std::string ReadLine();
    bool EndOfFile() { return next == buffer.size() && !Refill(); }
    // True after a failed read, which also ends the text.
    bool Failed() const { return failed; }
    // True after a line longer than LongestLine.
    bool HasCutLines() const { return hasCutLines; }

  private:
    TextInputStream() = default;
    bool Refill();
    void SkipMark();

    FileHandle file;
    std::string buffer;
    std::size_t next = 0;
    bool failed = false;
    bool hasCutLines = false;
};

} // namespace larkspool
