#pragma once

#include "platform/ByteOrder.h"
#include "platform/FileHandle.h"
#include "platform/FolderItem.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace larkspool {

// Numbers and strings in a file or in memory, big-endian by default.
// A field that the end cuts short reads as 0, false or "" and moves to the end.
// Nothing is buffered: each write call reaches the file as one write.
class BinaryStream {
  public:
    // Empty, in memory.
    BinaryStream() = default;
    static std::optional<BinaryStream> Open(const FolderItem& item);
    static std::optional<BinaryStream> Create(const FolderItem& item);
    static std::optional<BinaryStream> OpenForUpdate(const FolderItem& item);
    static BinaryStream FromBytes(std::string bytes);

    void SetByteOrder(ByteOrder value) { order = value; }

    bool ReadBoolean() { return ReadUInt8() != 0; }
    std::uint8_t ReadUInt8() { return ReadNumber<std::uint8_t>(); }
    std::uint16_t ReadUInt16() { return ReadNumber<std::uint16_t>(); }
    std::uint32_t ReadUInt32() { return ReadNumber<std::uint32_t>(); }
    std::int32_t ReadInt32() { return static_cast<std::int32_t>(ReadUInt32()); }
    // Any eight bytes, infinities and NaN included.
    double ReadDouble();
    std::string ReadString(std::size_t count);
    // One byte of length, then the text.
    std::string ReadPascalString();

    // Each is true if all of it was written.
    bool WriteBoolean(bool value) { return WriteUInt8(value ? 1 : 0); }
    bool WriteUInt8(std::uint8_t value) { return WriteNumber(value); }
    bool WriteUInt16(std::uint16_t value) { return WriteNumber(value); }
    bool WriteUInt32(std::uint32_t value) { return WriteNumber(value); }
    bool WriteInt32(std::int32_t value) { return WriteNumber(static_cast<std::uint32_t>(value)); }
    bool WriteDouble(double value);
    bool WriteString(std::string_view text);
    bool WriteBytes(std::span<const std::uint8_t> bytes);
    // Text over 255 bytes is cut at a character's boundary.
    bool WritePascalString(std::string_view text);

    // In bytes from the start; a position beyond the end becomes the end.
    void SetPosition(std::uint64_t value);
    std::uint64_t Length() const { return length; }
    bool EndOfFile() const { return position >= length; }

    // True if this and every transfer before it succeeded.
    bool Close();
    // Stays true after one failed read or write; later ones are still tried. A field that the end
    // cuts short is not a failure.
    bool Failed() const { return failed; }
    // The bytes of a stream in memory; leaves it empty.
    std::string TakeBytes();

  private:
    enum class Backing { Memory, File, Closed };
    enum class Transfer { None, Read, Write };

    static std::optional<BinaryStream> OverFile(const FolderItem& item, FileAccess access);
    bool ReadWhole(std::span<std::uint8_t> bytes);
    std::size_t ReadSome(std::span<std::uint8_t> bytes);
    std::size_t WriteSome(std::span<const std::uint8_t> bytes);
    bool PrepareFile(Transfer transfer);

    template <std::unsigned_integral T>
    T ReadNumber() {
        std::uint8_t bytes[sizeof(T)] = {};
        return ReadWhole(bytes) ? LoadNumber<T>(bytes, order) : T{0};
    }
    template <std::unsigned_integral T>
    bool WriteNumber(T value) {
        std::uint8_t bytes[sizeof(T)] = {};
        StoreNumber<T>(bytes, value, order);
        return WriteBytes(bytes);
    }

    Backing backing = Backing::Memory;
    FileHandle file;
    std::string memory;
    ByteOrder order = ByteOrder::BigEndian;
    std::uint64_t position = 0;
    std::uint64_t length = 0;
    // The last use of the file's own position; None after a seek.
    Transfer lastTransfer = Transfer::None;
    bool failed = false;
};

} // namespace larkspool
