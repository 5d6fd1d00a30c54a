#include "link/StatusLine.h"

#include "platform/Text.h"

#include <utility>

namespace larkspool {

void StatusLine::Begin(const std::string& hostPort) {
    target = "Connecting to " + hostPort;
    Say(target);
}

void StatusLine::Say(std::string words) {
    base = std::move(words);
    isStatistics = false;
    remark = {};
}

void StatusLine::SayStatistics(double samples, std::size_t bytes) {
    base = Str(samples) + " samples/sec    " + Str(bytes) + " bytes/sec";
    isStatistics = true;
}

std::string StatusLine::Text() const {
    std::string text = base;
    if (!remark.words.empty()) {
        text = (isStatistics ? base + "    " : target + ": ") + remark.words + remark.detail;
    }
    if (secondsToReconnect > 0) {
        text += ", again in " + Str(secondsToReconnect) + " s";
    }
    return text;
}

std::string StatusLine::TakeNews() {
    const std::string words = isStatistics || !remark.words.empty() ? remark.words : base;
    const std::string news = words + (secondsToReconnect > 0 ? ", again" : "");
    if (std::exchange(lastNews, news) == news || words.empty()) {
        return {};
    }
    return isStatistics ? Text().substr(base.size() + 4) : Text();
}

} // namespace larkspool
