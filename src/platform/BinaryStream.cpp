#include "platform/BinaryStream.h"

#include "platform/Text.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>
#include <limits>
#include <utility>

namespace larkspool {

std::optional<BinaryStream> BinaryStream::Open(const FolderItem& item) {
    return OverFile(item, FileAccess::Read);
}

std::optional<BinaryStream> BinaryStream::Create(const FolderItem& item) {
    return OverFile(item, FileAccess::Replace);
}

std::optional<BinaryStream> BinaryStream::OpenForUpdate(const FolderItem& item) {
    return OverFile(item, FileAccess::Update);
}

std::optional<BinaryStream> BinaryStream::OverFile(const FolderItem& item, FileAccess access) {
    FileHandle opened = OpenFile(item, access);
    if (!opened || std::setvbuf(opened.get(), nullptr, _IONBF, 0) != 0) {
        return std::nullopt;
    }
    BinaryStream stream;
    stream.backing = Backing::File;
    stream.file = std::move(opened);
    stream.length = access == FileAccess::Replace ? 0 : item.Length();
    return stream;
}

BinaryStream BinaryStream::FromBytes(std::string bytes) {
    BinaryStream stream;
    stream.length = bytes.size();
    stream.memory = std::move(bytes);
    return stream;
}

double BinaryStream::ReadDouble() { return std::bit_cast<double>(ReadNumber<std::uint64_t>()); }

std::string BinaryStream::ReadString(std::size_t count) {
    if (count > length - position) {
        SetPosition(length);
        return {};
    }
    std::string text(count, '\0');
    const bool whole = ReadWhole({reinterpret_cast<std::uint8_t*>(text.data()), text.size()});
    return whole ? text : std::string();
}

std::string BinaryStream::ReadPascalString() { return ReadString(ReadUInt8()); }

bool BinaryStream::WriteDouble(double value) {
    return WriteNumber(std::bit_cast<std::uint64_t>(value));
}

bool BinaryStream::WriteString(std::string_view text) {
    return WriteBytes({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

bool BinaryStream::WriteBytes(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        return backing != Backing::Closed;
    }
    const std::size_t written = WriteSome(bytes);
    position += written;
    length = std::max(length, position);
    if (written != bytes.size()) {
        failed = true;
    }
    return written == bytes.size();
}

bool BinaryStream::WritePascalString(std::string_view text) {
    const std::string cut = CutUtf8(text, 255);
    std::string field(1, static_cast<char>(cut.size()));
    field += cut;
    return WriteString(field);
}

void BinaryStream::SetPosition(std::uint64_t value) {
    position = std::min(value, length);
    lastTransfer = Transfer::None;
}

bool BinaryStream::Close() {
    if (file && std::fclose(file.release()) != 0) {
        failed = true;
    }
    backing = Backing::Closed;
    position = length = 0;
    return !failed;
}

std::string BinaryStream::TakeBytes() {
    position = length = 0;
    return std::exchange(memory, {});
}

bool BinaryStream::ReadWhole(std::span<std::uint8_t> bytes) {
    if (bytes.empty()) {
        return true;
    }
    const bool whole = bytes.size() <= length - position && ReadSome(bytes) == bytes.size();
    if (whole) {
        position += bytes.size();
    } else {
        SetPosition(length);
    }
    return whole;
}

std::size_t BinaryStream::ReadSome(std::span<std::uint8_t> bytes) {
    if (backing == Backing::Memory) {
        std::memcpy(bytes.data(), memory.data() + position, bytes.size());
        return bytes.size();
    }
    if (!PrepareFile(Transfer::Read)) {
        failed = true;
        return 0;
    }
    const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), file.get());
    if (std::ferror(file.get()) != 0) {
        failed = true;
    }
    return count;
}

std::size_t BinaryStream::WriteSome(std::span<const std::uint8_t> bytes) {
    if (backing == Backing::Memory) {
        const auto overlap =
            static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), length - position));
        memory.replace(static_cast<std::size_t>(position), overlap,
                       reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return bytes.size();
    }
    if (!PrepareFile(Transfer::Write)) {
        return 0;
    }
    const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), file.get());
    if (written != bytes.size()) {
        lastTransfer = Transfer::None;
    }
    return written;
}

bool BinaryStream::PrepareFile(Transfer transfer) {
    if (!file) {
        return false;
    }
    if (transfer == lastTransfer) {
        return true;
    }
    if (position > static_cast<std::uint64_t>(std::numeric_limits<long>::max())) {
        return false;
    }
    std::clearerr(file.get());
    if (std::fseek(file.get(), static_cast<long>(position), SEEK_SET) != 0) {
        return false;
    }
    lastTransfer = transfer;
    return true;
}

} // namespace larkspool
