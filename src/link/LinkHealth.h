#pragma once

#include "platform/TCPSocket.h"

#include <string>
#include <string_view>

namespace larkspool {

// What is wrong, for the status line. The detail is a number that counts on, such as " for 12 s".
struct Remark {
    std::string words; // empty while nothing is wrong
    std::string detail;
};

// What is known of a session's links from second to second: whether the receiver speaks, and what
// has ended them. Counts seconds by itself, so that a change of the clock means nothing. Owned by
// the console, started again with each session.
class LinkHealth {
  public:
    static constexpr int LongestSilence = 30; // seconds; then the link counts as lost

    void Arrived(); // a reply, a message or a frame, whole, on the audio link
    void SoundArrived() { hasSound = true; }
    void NotAReceiver(std::string_view reply); // what answers speaks no WebSocket
    void Failed(SocketFailure reason, int code);
    void WaterfallFailed() { hasWaterfall = false; }
    void Tick(); // a second has passed since the audio link came up, or since the last tick

    bool HasFailed() const { return !failure.empty(); }
    bool IsSilent() const { return silentSeconds >= LongestSilence; }
    Remark Problem() const; // the gravest

  private:
    int seconds = 0; // since the audio link came up
    int silentSeconds = 0;
    bool hasArrived = false; // since the last tick
    bool hasSound = false;
    bool hasWaterfall = true;
    std::string failure; // what has ended the audio link, or keeps it from being one
};

// "refused"; where no word fits, the system's number.
std::string FailureWords(SocketFailure reason, int code);

// "not a receiver (HTTP/1.1 404 Not Found)": with the first line of what came as a reply.
std::string NotAReceiverWords(std::string_view reply);

} // namespace larkspool
