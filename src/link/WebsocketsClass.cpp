#include "link/WebsocketsClass.h"

#include "link/CommandText.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace larkspool {

namespace {

constexpr unsigned OpcodePing = 9;
constexpr std::uint8_t BinaryFrame = 0x82; // with FIN set
constexpr std::uint8_t PongFrame = 0x8A;   // with FIN set
constexpr std::uint8_t MaskBit = 0x80;
constexpr std::size_t LongestShortPayload = 125;
constexpr std::uint8_t CommandKey = 0x32; // each byte of the masking key of every command
constexpr std::size_t KeySize = 4;
constexpr int KeepAlivePeriod = 1000; // ms
constexpr std::size_t LongestReply = std::size_t{16} * 1024;

} // namespace

WebsocketsClass::WebsocketsClass(Desktop& theDesktop, Random& keySource)
    : desktop(theDesktop), random(keySource) {}

void WebsocketsClass::Init(TCPSocket& socket) {
    inputDataFifoMB = std::make_unique_for_overwrite<std::uint8_t[]>(FifoSize);
    inputDataFifoMBInput = 0;
    inputDataFifoMBOutput = 0;
    theSocket = &socket;
    myTimer = desktop.MakeTimer();
    myTimer->action = [this] { MyTimerAction(); };
    myTimer->SetPeriod(KeepAlivePeriod);
    myTimer->SetMode(Timer::Mode::Multiple);
}

bool WebsocketsClass::ReadReply() {
    const std::size_t seen = std::max<std::size_t>(connectReply.size(), 3) - 3;
    connectReply += theSocket->ReadAll();
    waitingForConnectReply = connectReply.find("\r\n\r\n", seen) == std::string::npos &&
                             connectReply.find("\n\n", seen) == std::string::npos &&
                             connectReply.size() < LongestReply;
    return !waitingForConnectReply;
}

std::size_t WebsocketsClass::BytesInInputBuffer() const {
    return inputDataFifoMBInput >= inputDataFifoMBOutput
               ? inputDataFifoMBInput - inputDataFifoMBOutput
               : inputDataFifoMBInput + FifoSize - inputDataFifoMBOutput;
}

std::size_t WebsocketsClass::ReadNewData() {
    if (inputDataFifoMBInput == inputDataFifoMBOutput) {
        // An empty ring starts again at its front, which is still in the processor's cache.
        inputDataFifoMBInput = 0;
        inputDataFifoMBOutput = 0;
    }
    std::size_t total = 0;
    for (;;) {
        const std::size_t room = FifoSize - 1 - BytesInInputBuffer();
        const std::size_t chunk = std::min(room, FifoSize - inputDataFifoMBInput);
        if (chunk == 0) {
            break;
        }
        const std::size_t got = theSocket->Read({&inputDataFifoMB[inputDataFifoMBInput], chunk});
        inputDataFifoMBInput = (inputDataFifoMBInput + got) % FifoSize;
        total += got;
        if (got < chunk) {
            break;
        }
    }
    numRxBytes += total;
    return total;
}

bool WebsocketsClass::ReadAheadBytesFromInputBuffer(std::span<std::uint8_t> bytes) {
    const std::size_t ahead = (tempIndex + FifoSize - inputDataFifoMBOutput) % FifoSize;
    if (BytesInInputBuffer() < ahead + bytes.size()) {
        return false;
    }
    for (std::uint8_t& byte : bytes) {
        byte = inputDataFifoMB[tempIndex];
        tempIndex = (tempIndex + 1) % FifoSize;
    }
    return true;
}

bool WebsocketsClass::GetBytesFromInputBuffer(std::size_t count, std::string& bytes) {
    if (BytesInInputBuffer() < count) {
        return false;
    }
    const auto* ring = reinterpret_cast<const char*>(inputDataFifoMB.get());
    const std::size_t first = std::min(count, FifoSize - inputDataFifoMBOutput);
    bytes.assign(ring + inputDataFifoMBOutput, first);
    bytes.append(ring, count - first);
    Skip(count);
    return true;
}

void WebsocketsClass::Skip(std::size_t count) {
    inputDataFifoMBOutput = (inputDataFifoMBOutput + count) % FifoSize;
}

bool WebsocketsClass::ReadHeader(FrameHeader& header) {
    tempIndex = inputDataFifoMBOutput;
    std::array<std::uint8_t, 2> start{};
    if (!ReadAheadBytesFromInputBuffer(start)) {
        return false;
    }
    header.opcode = start[0] & 0x0FU;
    header.masked = (start[1] & MaskBit) != 0;
    header.length = start[1] & 0x7FU;
    header.size = start.size();
    if (header.length <= LongestShortPayload) {
        return true;
    }
    std::array<std::uint8_t, 8> extended{};
    const std::size_t count = header.length == 127 ? 8 : 2;
    if (!ReadAheadBytesFromInputBuffer(std::span(extended).first(count))) {
        return false;
    }
    header.length = 0;
    for (std::size_t i = 0; i < count; ++i) { // most significant byte first
        header.length = header.length << 8U | extended[i];
    }
    header.size += count;
    return true;
}

bool WebsocketsClass::WebsocketRead(std::string& tag, std::string& body) {
    tag.clear();
    body.clear();
    FrameHeader header;
    if (theSocket == nullptr || !ReadHeader(header)) {
        return false;
    }
    const std::size_t overhead = header.size + (header.masked ? KeySize : 0);
    if (header.length > FifoSize - 1 - overhead) {
        // The ring could never hold this frame: these bytes are no frame, nor is anything after
        // them.
        inputDataFifoMBOutput = inputDataFifoMBInput;
        theSocket->Disconnect();
        return false;
    }
    const auto length = static_cast<std::size_t>(header.length);
    if (BytesInInputBuffer() < overhead + length) {
        return false;
    }
    Skip(overhead); // a receiver should not mask its frames; a masking key is ignored
    if (header.opcode == OpcodePing) {
        std::string payload;
        GetBytesFromInputBuffer(length, payload);
        SendPong(payload);
        return true;
    }
    constexpr std::size_t TagSize = 3;
    GetBytesFromInputBuffer(std::min(length, TagSize), tag);
    GetBytesFromInputBuffer(length - tag.size(), body);
    return true;
}

void WebsocketsClass::SendPong(std::string_view payload) {
    const std::string_view echoed = payload.substr(0, LongestShortPayload);
    std::array<std::uint8_t, KeySize> key{};
    std::string frame;
    frame += static_cast<char>(PongFrame);
    frame += static_cast<char>(MaskBit | echoed.size());
    for (std::uint8_t& byte : key) {
        byte = static_cast<std::uint8_t>(random.InRange(0, 255));
        frame += static_cast<char>(byte);
    }
    for (std::size_t i = 0; i < echoed.size(); ++i) {
        frame += static_cast<char>(static_cast<std::uint8_t>(echoed[i]) ^ key[i % KeySize]);
    }
    theSocket->Write(frame);
}

void WebsocketsClass::WebsocketWrite(std::string_view text) {
    if (theSocket == nullptr) {
        return;
    }
    const std::string sent = CutUtf8(text, LongestShortPayload);
    std::string frame;
    frame.reserve(sent.size() + 2 + KeySize);
    frame += static_cast<char>(BinaryFrame);
    frame += static_cast<char>(MaskBit | sent.size());
    frame.append(KeySize, static_cast<char>(CommandKey));
    for (const char character : sent) {
        frame += static_cast<char>(static_cast<std::uint8_t>(character) ^ CommandKey);
    }
    theSocket->Write(frame);
}

void WebsocketsClass::Closing() {
    if (myTimer != nullptr) {
        myTimer->SetMode(Timer::Mode::Off);
        myTimer->action = nullptr;
    }
    if (theSocket != nullptr) {
        theSocket->Disconnect();
    }
}

void WebsocketsClass::MyTimerAction() {
    if (theSocket != nullptr && theSocket->IsConnected()) {
        WebsocketWrite(command::KeepAlive);
    }
}

} // namespace larkspool
