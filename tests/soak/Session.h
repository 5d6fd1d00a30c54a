#pragma once

#include "schedule/SkedWindow.h"
#include "shell/App.h"
#include "soak/Books.h"
#include "soak/Memory.h"
#include "soak/SoakDesktop.h"
#include "soak/SoakReceiver.h"
#include "soak/StreamPeer.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace larkspool::soak {

// The whole program among a receiver with troubles, a user who never rests, a schedule and a peer
// on the network, for so many hours around a midnight.
class Session {
  public:
    Session(double hours, std::uint32_t seed);

    void Run();
    bool PrintVerdict() const; // true: everything has passed

  private:
    void OpenSchedule();
    void RunHour(double seconds);
    void CountFinishedFiles();
    ConsoleState State();
    void ActLater();
    void Act();
    void Ask(const std::string& command); // of the peer
    void PrintHours() const;
    bool PrintMemory() const;

    double length; // hours
    Books books;
    std::mt19937_64 chance;
    StreamPeer peer;
    SoakDesktop desktop;
    SoakReceiver receiver;
    App app{desktop, {}};
    Window1* console = nullptr;
    std::int64_t entries = 0;   // of the schedule that have begun
    std::vector<Memory> memory; // at the end of each hour
};

} // namespace larkspool::soak
