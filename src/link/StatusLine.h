#pragma once

#include "link/LinkHealth.h"

#include <cstddef>
#include <string>

namespace larkspool {

// The text of the console's status line: how far the session is, or what comes in each second, and
// behind it what is wrong and when it is tried again. Owned by the console.
class StatusLine {
  public:
    // "Connecting to sdr.example.net:8073": what an attempt that fails is called.
    void Begin(const std::string& hostPort);
    void Say(std::string words);                           // an event's own words, "Connected"
    void SayStatistics(double samples, std::size_t bytes); // of the last second
    void SetRemark(Remark what) { remark = std::move(what); }
    void SetSecondsToReconnect(int seconds) { secondsToReconnect = seconds; } // 0: none is due

    std::string Text() const;

    // What is new in words since the last call, for the log; empty if only numbers have changed.
    std::string TakeNews();

  private:
    std::string target; // "Connecting to ..."
    std::string base = "-";
    bool isStatistics = false;
    Remark remark;
    int secondsToReconnect = 0;
    std::string lastNews;
};

} // namespace larkspool
