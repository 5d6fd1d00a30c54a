// Any bytes as a datagram of remote control: what the console is asked to do is something that its
// controls can hold, and asking again for what a field shows changes nothing.
#include "Input.h"
#include "console/ModeSettingsClass.h"
#include "platform/Text.h"
#include "remote/RemoteCommand.h"

#include <cmath>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    const std::string_view datagram(reinterpret_cast<const char*>(data), size);
    const std::string line = RemoteLine(datagram);
    fuzz::Require(line.size() <= datagram.size(), "a line is no longer than its datagram");
    const auto command = ParseRemoteCommand(line);
    if (!command) {
        return 0;
    }
    fuzz::Require(command->text.size() <= std::max<std::size_t>(line.size(), 400),
                  "a field's text stays short");
    if (command->verb == RemoteVerb::SelectMode) {
        fuzz::Require(command->row >= 0 &&
                          command->row < static_cast<int>(ModeSettingsClass::Captions.size()),
                      "the mode has a row in the popup");
    }
    if (command->verb == RemoteVerb::SetFrequency) {
        const double kilohertz = Val(command->text);
        fuzz::Require(std::isfinite(kilohertz), "a frequency is a number");
        fuzz::Require(command->text.find_first_not_of("-.0123456789") == std::string::npos,
                      "a frequency is plain decimal");
        fuzz::Require(Str(kilohertz) == command->text, "a frequency shows as it is stored");
    }
    return 0;
}
