#include "platform/BinaryStream.h"
#include "platform/TemporaryFolder.h"
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace larkspool {
namespace {

using BinaryStreamTest = TemporaryFolder;

using Stream = BinaryStream;

struct Field {
    std::size_t size;
    bool (*write)(Stream&);
    std::string (*read)(Stream&);
    std::string value;
    std::string nothing;
};

const Field fields[] = {{1, [](Stream& s) { return s.WriteBoolean(true); },
                         [](Stream& s) { return Str(int{s.ReadBoolean()}); }, "1", "0"},
                        {4, [](Stream& s) { return s.WriteInt32(-130); },
                         [](Stream& s) { return Str(s.ReadInt32()); }, "-130", "0"},
                        {4, [](Stream& s) { return s.WriteString("RIFF"); },
                         [](Stream& s) { return s.ReadString(4); }, "RIFF", ""},
                        {8, [](Stream& s) { return s.WriteDouble(14074.5); },
                         [](Stream& s) { return Str(s.ReadDouble()); }, "14074.5", "0"},
                        {6, [](Stream& s) { return s.WritePascalString("Se\u00f1a"); },
                         [](Stream& s) { return s.ReadPascalString(); }, "Se\u00f1a", ""},
                        {2, [](Stream& s) { return s.WriteUInt16(65000); },
                         [](Stream& s) { return Str(s.ReadUInt16()); }, "65000", "0"},
                        {4, [](Stream& s) { return s.WriteUInt32(4000000000); },
                         [](Stream& s) { return Str(s.ReadUInt32()); }, "4000000000", "0"},
                        {1, [](Stream& s) { return s.WriteUInt8(255); },
                         [](Stream& s) { return Str(s.ReadUInt8()); }, "255", "0"}};

// From the first field that isn't whole, everything reads as nothing.
void ExpectFieldsUpTo(BinaryStream& stream, std::size_t length) {
    std::size_t end = 0;
    for (const Field& field : fields) {
        end += field.size;
        EXPECT_EQ(field.read(stream), end <= length ? field.value : field.nothing)
            << "field ending at " << end << " of " << length;
    }
    EXPECT_TRUE(stream.EndOfFile());
}

TEST_F(BinaryStreamTest, AFileCutAnywhereLoadsWhatIsWhole) {
    for (const ByteOrder order : {ByteOrder::BigEndian, ByteOrder::LittleEndian}) {
        BinaryStream writer;
        writer.SetByteOrder(order);
        for (const Field& field : fields)
            EXPECT_TRUE(field.write(writer));
        const std::string bytes = writer.TakeBytes();
        ASSERT_EQ(bytes.size(), 30U);
        for (std::size_t length = 0; length <= bytes.size(); ++length) {
            const std::string cut = bytes.substr(0, length);
            BinaryStream memory = BinaryStream::FromBytes(cut);
            memory.SetByteOrder(order);
            ExpectFieldsUpTo(memory, length);
            auto file = BinaryStream::Open(FileWith("cut", cut));
            ASSERT_TRUE(file.has_value());
            file->SetByteOrder(order);
            ExpectFieldsUpTo(*file, length);
            EXPECT_FALSE(file->Failed());
        }
    }
}

TEST_F(BinaryStreamTest, AHeaderIsPatchedWithoutTouchingTheRest) {
    const FolderItem item = FileWith("take.WAV", "an older and much longer recording");
    auto file = BinaryStream::Create(item);
    ASSERT_TRUE(file.has_value());
    EXPECT_TRUE(file->WriteString("head"));
    EXPECT_TRUE(file->WriteString("samples"));
    file->SetPosition(0);
    EXPECT_TRUE(file->WriteString("HEAD"));
    EXPECT_EQ(file->Length(), 11U);
    EXPECT_EQ(ContentOf(item), "HEADsamples") << "unbuffered: a crash loses nothing";
    EXPECT_TRUE(file->Close());
    EXPECT_FALSE(file->WriteUInt8(1));

    auto update = BinaryStream::OpenForUpdate(item);
    ASSERT_TRUE(update.has_value());
    EXPECT_EQ(update->ReadString(2), "HE");
    EXPECT_TRUE(update->WriteString("LP"));
    EXPECT_EQ(update->ReadString(3), "sam");
    update->SetPosition(1000);
    EXPECT_TRUE(update->WriteString("!"));
    EXPECT_TRUE(update->Close());
    EXPECT_EQ(ContentOf(item), "HELPsamples!");
}

TEST_F(BinaryStreamTest, AClaimOfGigabytesTakesNoMemory) {
    BinaryStream stream = BinaryStream::FromBytes("abc");
    EXPECT_EQ(stream.ReadString(static_cast<std::size_t>(-1)), "");
    EXPECT_TRUE(stream.EndOfFile());
}

TEST_F(BinaryStreamTest, AFullDiskIsNoticedAndStaysNoticed) {
    const FolderItem full("/dev/full");
    if (!full.Exists())
        GTEST_SKIP() << "no full device here";
    auto stream = BinaryStream::Create(full);
    ASSERT_TRUE(stream.has_value());
    EXPECT_FALSE(stream->Failed());
    EXPECT_FALSE(stream->WriteString(std::string(100000, 'x')));
    EXPECT_TRUE(stream->Failed());
    stream->SetPosition(0);
    EXPECT_FALSE(stream->WriteInt32(1));
    EXPECT_FALSE(stream->Close());
}

TEST_F(BinaryStreamTest, AReadThatFailsIsNoEnd) {
    const FolderItem unreadable("/sys/class/net/lo/duplex"); // opens, has a length, can't be read
    if (!unreadable.Exists())
        GTEST_SKIP() << "no such file here";
    auto stream = BinaryStream::Open(unreadable);
    ASSERT_TRUE(stream.has_value());
    EXPECT_EQ(stream->ReadInt32(), 0);
    EXPECT_TRUE(stream->Failed());
    EXPECT_FALSE(stream->Close());
}

TEST_F(BinaryStreamTest, WhatIsNoFileIsNotOpened) {
    EXPECT_FALSE(BinaryStream::Open(folder).has_value());
    EXPECT_FALSE(BinaryStream::Create(folder).has_value());
    EXPECT_FALSE(BinaryStream::Open(Item("missing")).has_value());
    EXPECT_FALSE(BinaryStream::OpenForUpdate(Item("missing")).has_value());
    EXPECT_FALSE(BinaryStream::Create(Item("missing/file")).has_value());
    EXPECT_FALSE(BinaryStream::Open(FolderItem("/dev/zero")).has_value()) << "endless";
    FileWith("prefs", "abcd");
    EXPECT_FALSE(BinaryStream::Open(Item(std::string("prefs\0x", 7))).has_value());
    EXPECT_FALSE(BinaryStream::Create(Item(std::string("prefs\0x", 7))).has_value());
    EXPECT_EQ(ContentOf(Item("prefs")), "abcd");
}

TEST_F(BinaryStreamTest, AFileThatShrinksMeanwhileReadsAsCut) {
    const FolderItem item = FileWith("prefs", "12345678");
    auto stream = BinaryStream::Open(item);
    ASSERT_TRUE(stream.has_value());
    FileWith("prefs", "123456");
    EXPECT_EQ(stream->ReadString(4), "1234");
    EXPECT_EQ(stream->ReadInt32(), 0);
    EXPECT_TRUE(stream->EndOfFile());
}

} // namespace
} // namespace larkspool
