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
// frames, the writer of commands and the keep-alive. Owned by the console, made anew for each
// connection; the socket belongs to the console and outlives it.
class WebsocketsClass {
  public:
    // Bytes in the ring; one of them stays free, so that full and empty can be told apart.
    static constexpr std::size_t FifoSize = 0x100000;

    WebsocketsClass(Desktop& theDesktop, Random& keySource);

    // Binds the link to its socket and starts the keep-alive, once a second.
    void Init(TCPSocket& socket);

    // Adds what the socket holds to the reply to the upgrade request. True: the reply is there, up
    // to its blank line and with what came behind it in the same read, or it is longer than a
    // receiver's ever is.
    bool ReadReply();

    // Moves what the socket holds into the ring, as far as there is room. How many bytes it moved.
    std::size_t ReadNewData();

    // Takes one frame off the ring, if one is there whole: its first three bytes as the tag, the
    // rest as the body. Pings are answered here and give an empty tag. False: no whole frame left.
    // A stream that has lost its framing ends the link, which the socket reports as lost.
    bool WebsocketRead(std::string& tag, std::string& body);

    // Sends a command as one frame. Only its first 125 bytes go out, never half a letter.
    void WebsocketWrite(std::string_view text);

    // Stops the keep-alive and closes the socket. The object is of no use afterwards.
    void Closing();

    std::size_t BytesInInputBuffer() const;

    std::size_t numRxBytes = 0;          // since the statistics timer last zeroed it
    bool waitingForConnectReply = false; // the next data belongs to the reply
    std::string connectReply;            // as far as it has come

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
    std::size_t tempIndex = 0;             // how far a header has been looked at
};

} // namespace larkspool
