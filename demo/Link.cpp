#include "demo/Link.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>

namespace larkspool::demo {
namespace {

constexpr double SilenceSeconds = 60.0; // a client that is silent for so long is closed
constexpr double FarewellSeconds = 5.0; // for the last output to go out
constexpr double QueueSeconds = 2.0;    // what a slow reader may have waiting
constexpr double CatchUpSeconds = 1.0;  // frames that are later than this aren't made
constexpr std::array RowsPerSecond{0.0, 1.0, 5.0, 25.0, 25.0};

std::string RateText(double rate) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), rate).ptr;
    return {text.data(), end};
}

} // namespace

Link::Link(LinkKind linkKind, const Band& sharedBand, const Antenna& ownAntenna,
           const LinkSettings& linkSettings, TimePoint now)
    : kind(linkKind), band(sharedBand), antenna(ownAntenna), settings(linkSettings),
      jitter(Scramble(linkSettings.seed, 9)), lastHeard(now), waterfall(sharedBand, ownAntenna) {
    if (settings.dropAfterSeconds > 0.0) {
        cutAt = now + Seconds(settings.dropAfterSeconds);
    }
}

bool Link::IsCut(TimePoint now) const {
    return now >= cutAt || reader.HasFailed() || now > lastHeard + Seconds(SilenceSeconds);
}

void Link::Receive(std::span<const std::uint8_t> bytes, TimePoint now, const Moment& utc) {
    if (ending) {
        return;
    }
    lastHeard = now;
    reader.Add(bytes);
    while (!ending) {
        const auto message = reader.Next();
        if (!message) {
            break;
        }
        Take(*message, now, utc);
    }
}

void Link::Take(const Incoming& message, TimePoint now, const Moment& utc) {
    const auto* begin = reinterpret_cast<const std::uint8_t*>(message.payload.data());
    const std::span payload(begin, std::min<std::size_t>(message.payload.size(), 125));
    switch (message.opcode) {
    case Opcode::Ping:
        // A client that pings without reading gets no more than a few answers.
        if (output.Pieces() < 100) {
            output.Push(EncodeFrame(Opcode::Pong, payload));
        }
        break;
    case Opcode::Close:
        output.Push(EncodeFrame(Opcode::Close, payload));
        End(now);
        break;
    case Opcode::Text:
    case Opcode::Binary:
        Command(message.payload, now, utc);
        break;
    default:
        break;
    }
}

void Link::Command(std::string_view text, TimePoint now, const Moment& utc) {
    const bool known = tuning.authorised;
    const int speed = tuning.speed;
    if (!Obey(text, tuning) || !tuning.authorised) {
        return;
    }
    if (!known) {
        Welcome(now);
    }
    if (kind == LinkKind::Sound && !settings.busy) {
        StartOrRetuneSound(now, utc);
    }
    const bool rowsWanted = kind == LinkKind::Waterfall && tuning.zoomed && tuning.speed > 0;
    if (!rowsWanted) {
        nextRow = TimePoint::max();
    } else if (nextRow == TimePoint::max() || speed != tuning.speed) {
        nextRow = now;
    }
}

void Link::End(TimePoint now) {
    ending = true;
    cutAt = std::min(cutAt, now + Seconds(FarewellSeconds));
}

void Link::Welcome(TimePoint now) {
    if (settings.busy && kind == LinkKind::Sound) {
        SendMessage(" too_busy=4");
        End(now);
        return;
    }
    SendMessage(" version_maj=1 version_min=3");
    SendMessage(" rx_chans=12 bandwidth=30000000 adc_clk_nom=60000000");
    if (kind == LinkKind::Sound) {
        SendMessage(" audio_init=0");
    } else {
        SendMessage(" wf_fft_size=1024 wf_fps_max=25 zoom_max=14 start=0");
    }
}

void Link::StartOrRetuneSound(TimePoint now, const Moment& utc) {
    if (!sound && tuning.audioAccepted && tuning.tuned) {
        sound = std::make_unique<SoundStream>(band, antenna, settings.rate);
        soundStart = now;
        soundStartUtc = utc;
        framesMade = 0;
        SendMessage(" audio_rate=" + RateText(settings.rate));
    }
    retuned = true;
}

void Link::SendMessage(std::string_view body) {
    const std::string message = "MSG" + std::string(body);
    const auto* begin = reinterpret_cast<const std::uint8_t*>(message.data());
    output.Push(EncodeFrame(Opcode::Binary, {begin, message.size()}));
}

void Link::SendFrame(std::span<const std::uint8_t> message, TimePoint now) {
    TimePoint when = now;
    if (settings.jitterSeconds > 0.0) {
        when += Seconds(settings.jitterSeconds * jitter.NextEven());
    }
    output.Push(EncodeFrame(Opcode::Binary, message), when);
}

TimePoint Link::FrameTime(std::uint64_t frame) const {
    const double samples = static_cast<double>(frame) * SoundStream::SamplesPerFrame;
    return soundStart + Seconds(samples / settings.rate);
}

void Link::Tick(TimePoint now, const Moment& utc) {
    if (sound) {
        TickSound(now, utc);
    }
    if (nextRow <= now) {
        TickWaterfall(now, utc);
    }
}

void Link::TickSound(TimePoint now, const Moment& utc) {
    const double frameSeconds = SoundStream::SamplesPerFrame / settings.rate;
    const auto mostWaiting =
        static_cast<std::size_t>((QueueSeconds + settings.jitterSeconds) / frameSeconds);
    if (now - FrameTime(framesMade) > Seconds(QueueSeconds + CatchUpSeconds)) {
        // The computer has slept: go on with the present instead of the past.
        soundStart = now - Seconds(frameSeconds);
        soundStartUtc = utc.After(-frameSeconds);
        framesMade = 0;
    }
    for (; FrameTime(framesMade + 1) <= now; ++framesMade) {
        if (output.Pieces() >= mostWaiting) {
            sound->SkipFrame();
            continue;
        }
        // Only now, so that a flood of commands costs no more than a few.
        if (std::exchange(retuned, false)) {
            sound->Tune(tuning);
        }
        const double into = static_cast<double>(framesMade) * frameSeconds;
        SendFrame(sound->Frame(soundStartUtc.After(into)), now);
    }
}

void Link::TickWaterfall(TimePoint now, const Moment& utc) {
    const double pace = RowsPerSecond[static_cast<std::size_t>(tuning.speed)];
    if (static_cast<double>(output.Pieces()) < pace * (QueueSeconds + settings.jitterSeconds) + 1) {
        SendFrame(waterfall.Row(tuning, utc), now);
    }
    nextRow += Seconds(1.0 / pace);
    if (nextRow < now) {
        nextRow = now + Seconds(1.0 / pace);
    }
}

TimePoint Link::NextTime(TimePoint now) const {
    TimePoint next = std::min({nextRow, cutAt, lastHeard + Seconds(SilenceSeconds + 0.1)});
    if (sound) {
        next = std::min(next, FrameTime(framesMade + 1));
    }
    if (const auto queued = output.NextTime(); queued && *queued > now) {
        next = std::min(next, *queued);
    }
    return next;
}

} // namespace larkspool::demo
