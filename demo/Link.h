#pragma once

#include "demo/Band.h"
#include "demo/Command.h"
#include "demo/Handshake.h"
#include "demo/Noise.h"
#include "demo/OutputQueue.h"
#include "demo/SoundStream.h"
#include "demo/WaterfallRow.h"
#include "demo/WebSocketFrame.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace larkspool::demo {

// How the receivers treat all their clients.
struct LinkSettings {
    double rate = 12000.0;
    double jitterSeconds = 0.0;
    double dropAfterSeconds = 0.0; // 0: never
    bool busy = false;
    std::uint64_t seed = 1;
};

// One upgraded link to a client: obeys its commands and makes its frames in time. Uses no socket;
// the server moves the bytes. Borrows band and antenna.
class Link {
  public:
    Link(LinkKind linkKind, const Band& sharedBand, const Antenna& ownAntenna,
         const LinkSettings& linkSettings, TimePoint now);

    // Bytes from the client, after the upgrade request.
    void Receive(std::span<const std::uint8_t> bytes, TimePoint now, const Moment& utc);

    // Makes the frames that are due.
    void Tick(TimePoint now, const Moment& utc);

    // When to call Tick again; output that could be written now doesn't count.
    TimePoint NextTime(TimePoint now) const;

    OutputQueue& Output() { return output; }

    // The link is to be closed, at once or after its output is sent.
    bool IsCut(TimePoint now) const;
    bool IsEnding() const { return ending; }

  private:
    void Take(const Incoming& message, TimePoint now, const Moment& utc);
    void Command(std::string_view text, TimePoint now, const Moment& utc);
    void Welcome(TimePoint now);
    void End(TimePoint now);
    void StartOrRetuneSound(TimePoint now, const Moment& utc);
    void TickSound(TimePoint now, const Moment& utc);
    void TickWaterfall(TimePoint now, const Moment& utc);
    void SendMessage(std::string_view body);
    void SendFrame(std::span<const std::uint8_t> message, TimePoint now);
    TimePoint FrameTime(std::uint64_t frame) const;

    LinkKind kind;
    const Band& band;
    const Antenna& antenna;
    LinkSettings settings;
    FrameReader reader;
    Tuning tuning;
    OutputQueue output;
    Noise jitter;
    TimePoint cutAt = TimePoint::max();
    TimePoint lastHeard;
    bool ending = false;
    bool retuned = false; // the latest commands are not yet applied to the sound

    std::unique_ptr<SoundStream> sound; // null until the session's commands have arrived
    TimePoint soundStart;
    Moment soundStartUtc;
    std::uint64_t framesMade = 0;

    WaterfallRow waterfall;
    TimePoint nextRow = TimePoint::max();
};

} // namespace larkspool::demo
