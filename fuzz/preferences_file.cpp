// Any bytes as the preferences file: what has been read and written once stays the same for good,
// and what could not work has been replaced.
#include "Input.h"
#include "shell/Preferences.h"

#include <cmath>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    const Preferences read =
        DecodePreferences(std::string(reinterpret_cast<const char*>(data), size));
    fuzz::Require(read.prefsLastPort > 0, "the port can work");
    fuzz::Require(std::isfinite(read.prefsLastFreq) && read.prefsLastFreq > 0,
                  "the frequency can work");
    fuzz::Require(read.prefsWaterfallGain > 0 && read.prefsWaterfallOffset > 0,
                  "the waterfall can work");
    const std::string written = EncodePreferences(read);
    fuzz::Require(EncodePreferences(DecodePreferences(written)) == written,
                  "what is written is read the same");
    return 0;
}
