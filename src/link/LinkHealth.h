#pragma once

#include "platform/TCPSocket.h"

#include <string>
#include <string_view>

namespace larkspool {

// What is wrong, for the status line. The detail is a number that changes, such as " for 12 s".
struct Remark {
    std::string words; // empty while nothing is wrong
    std::string detail;
};

// The state of a session's links: whether the receiver sends, and why a link has ended. Counts the
// seconds itself, so that a change of the computer's clock has no effect. Owned by the console,
// reset for each session.
class LinkHealth {
  public:
    static constexpr int LongestSilence = 30; // seconds; a longer one is a lost link

    void Arrived(); // a whole reply, message or frame on the audio link
    void SoundArrived() { hasSound = true; }
    void NotAReceiver(std::string_view reply); // the server does not speak WebSocket
    void Failed(SocketFailure reason, int code);
    void WaterfallFailed() { hasWaterfall = false; }
    void Tick(); // call once per second while the audio link is up

    bool HasFailed() const { return !failure.empty(); }
    bool IsSilent() const { return silentSeconds >= LongestSilence; }
    Remark Problem() const; // the most serious one

  private:
    int seconds = 0; // since the audio link came up
    int silentSeconds = 0;
    bool hasArrived = false; // since the last tick
    bool hasSound = false;
    bool hasWaterfall = true;
    std::string failure; // why the audio link has ended or did not start
};

// "refused"; the system's error number if there is no word for it.
std::string FailureWords(SocketFailure reason, int code);

// "not a receiver (HTTP/1.1 404 Not Found)", with the first line of the reply.
std::string NotAReceiverWords(std::string_view reply);

} // namespace larkspool
