#pragma once

#include "link/LinkHealth.h"

#include <cstddef>
#include <string>

namespace larkspool {

// The text of the console's status line, in two parts: the latest words of an event, or the
// statistics that replace them once per second; and a remark, which says what is wrong and stays
// beside the statistics. Owned by the console.
class StatusLine {
  public:
    // Says "Connecting to sdr.example.net:8073", and puts that in front of a later remark.
    void Begin(const std::string& hostPort);
    void Say(std::string words);                           // an event, "Connected"
    void SayStatistics(double samples, std::size_t bytes); // of the last second
    void SetRemark(Remark what) { remark = std::move(what); }
    void SetSecondsToReconnect(int seconds) { secondsToReconnect = seconds; } // 0: none is planned

    std::string Text() const;

    // The text, for the log, if its words have changed since the last call; empty if only numbers
    // have changed.
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
