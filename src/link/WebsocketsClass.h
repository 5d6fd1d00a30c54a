#pragma once

#include "platform/Desktop.h"
#include "platform/Random.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace larkspool {

// One WebSocket link to a receiver: a ring of received bytes, the reader that cuts them into
// frames, the writer of commands and the keep-alive. Owned by the console, which creates a new one
// for each connection. The socket belongs to the console and exists longer.
class WebsocketsClass {
  public:
    // Bytes in the ring. One byte stays free, so that a full ring differs from an empty one.
    static constexpr std::size_t FifoSize = 0x100000;

    WebsocketsClass(Desktop& theDesktop, Random& keySource);

    // Connects the link to its socket and starts the keep-alive, once per second.
    void Init(TCPSocket& socket);

    // Appends what the socket holds to the reply to the upgrade request. True: the reply is
    // complete up to its blank line (bytes after it in the same read are kept), or it is longer
    // than any receiver's reply.
    bool ReadReply();

    // Moves what the socket holds into the ring, as far as there is room. Returns how many bytes.
    std::size_t ReadNewData();

    // Takes one whole frame from the ring: its first three bytes are the tag, the rest is the body.
    // A ping is answered here and gives an empty tag. False: the ring holds no whole frame. Bytes
    // that cannot be a frame end the link; the socket then reports it as lost.
    bool WebsocketRead(std::string& tag, std::string& body);

    // Sends a command as one frame. Sends at most its first 125 bytes and never part of a
    // character.
    void WebsocketWrite(std::string_view text);

    // Stops the keep-alive and closes the socket. The object cannot be used afterwards.
    void Closing();

    std::size_t BytesInInputBuffer() const;

    std::size_t numRxBytes = 0;          // since the statistics timer last zeroed it
    bool waitingForConnectReply = false; // the next data belongs to the reply
    std::string connectReply;            // as much as has arrived

  private:
    struct FrameHeader {
        unsigned opcode = 0;
        bool masked = false;
        std::uint64_t length = 0; // of the payload
        std::size_t size = 0;     // of the header itself, without the masking key
    };

    bool ReadHeader(FrameHeader& header);
    bool ReadAheadBytesFromInputBuffer(std::span<std::uint8_t> bytes);
    bool GetBytesFromInputBuffer(std::size_t count, std::string& bytes);
    void Skip(std::size_t count);
    void SendPong(std::string_view payload);
    void MyTimerAction();

    Desktop& desktop;
    Random& random;
    TCPSocket* theSocket = nullptr;
    std::unique_ptr<Timer> myTimer;
    std::unique_ptr<std::uint8_t[]> inputDataFifoMB;
    std::size_t inputDataFifoMBInput = 0;  // next byte to write
    std::size_t inputDataFifoMBOutput = 0; // next byte to read
    std::size_t tempIndex = 0;             // read position while a header is examined
};

} // namespace larkspool
